# What `cmake --install` puts where, and the Debian package that `cpack -G DEB` makes of it.
# scripts/release makes the packages as they are shipped.

if(WIN32)
  return()  # scripts/windows/package
endif()
include(GNUInstallDirs)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
find_program(TARN_GZIP gzip REQUIRED)

set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(made ${PROJECT_BINARY_DIR}/packaging)
set(data ${CMAKE_INSTALL_DATAROOTDIR})
set(doc ${data}/doc/tarn)
file(MAKE_DIRECTORY ${made})

# The time of the release: the tree out of a source package has the time of its commit.
set(release_time $ENV{SOURCE_DATE_EPOCH})
if(NOT release_time)
  file(TIMESTAMP ${PROJECT_SOURCE_DIR}/CHANGELOG.md release_time "%s" UTC)
endif()
tarn_read_license(copyright maintainer)
# Debian wants an address; the name "invalid" says that there is none.
set(TARN_MAINTAINER "${maintainer} <contributors@tarn.invalid>" CACHE STRING
  "Who answers for the package: NAME <ADDRESS>")

# tarn_packaged_text(KIND FILE): one of the texts that packaging/texts makes.
function(tarn_packaged_text kind file)
  execute_process(
    COMMAND ${Python3_EXECUTABLE} ${packaging}/texts
      ${kind} ${PROJECT_VERSION} ${release_time} ${TARN_MAINTAINER}
    OUTPUT_FILE ${made}/${file}
    COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# tarn_compress(FROM TO): the same bytes for the same file.
function(tarn_compress from to)
  execute_process(COMMAND ${TARN_GZIP} -9nc ${from} OUTPUT_FILE ${to} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(tarn_install_man_page name)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${packaging}/man/${name})
  tarn_compress(${packaging}/man/${name} ${made}/${name}.gz)
  install(FILES ${made}/${name}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endfunction()

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
  ${packaging}/texts ${packaging}/copyright.libraries ${packaging}/desktop/tarn.metainfo.xml.in
  ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/LICENSE)
tarn_packaged_text(changelog changelog)
tarn_packaged_text(metainfo tarn.metainfo.xml)
tarn_packaged_text(copyright copyright)
tarn_compress(${made}/changelog ${made}/changelog.gz)

# Debian's folder for packages; zsh itself looks into site-functions.
set(TARN_ZSH_FOLDER ${data}/zsh/vendor-completions CACHE STRING
  "Where completions for zsh are installed")
# tarn_install_completions(PROGRAM): for bash, zsh and fish.
function(tarn_install_completions program)
  set(completions ${packaging}/completions)
  install(FILES ${completions}/${program}.bash
    DESTINATION ${data}/bash-completion/completions RENAME ${program})
  install(FILES ${completions}/_${program} DESTINATION ${TARN_ZSH_FOLDER})
  install(FILES ${completions}/${program}.fish DESTINATION ${data}/fish/vendor_completions.d)
endfunction()

install(TARGETS tarn-cli RUNTIME)
tarn_install_man_page(tarn-cli.1)
tarn_install_completions(tarn-cli)

install(FILES ${made}/changelog.gz ${made}/copyright SECURITY.md DESTINATION ${doc})
# What is for users: the guide and what it leads to.
install(DIRECTORY docs/ DESTINATION ${doc}/docs FILES_MATCHING
  PATTERN *.md PATTERN *.png PATTERN *.svg PATTERN performance.md EXCLUDE PATTERN growth.svg EXCLUDE)
install(DIRECTORY examples DESTINATION ${doc} FILES_MATCHING
  PATTERN *.md PATTERN *.net PATTERN *.txt)
install(PROGRAMS examples/surface/make_surface.py DESTINATION ${doc}/examples/surface)

if(TARN_WINDOWS)
  set(icons ${data}/icons/hicolor)
  install(TARGETS tarn RUNTIME)
  tarn_install_man_page(tarn.1)
  tarn_install_completions(tarn)
  install(FILES ${packaging}/desktop/tarn.desktop DESTINATION ${data}/applications)
  install(FILES ${packaging}/desktop/tarn-mime.xml
    DESTINATION ${data}/mime/packages RENAME tarn.xml)
  install(FILES ${made}/tarn.metainfo.xml DESTINATION ${data}/metainfo)
  install(FILES resources/tarn.svg DESTINATION ${icons}/scalable/apps)
  find_program(RSVG_CONVERT rsvg-convert REQUIRED)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS resources/tarn.svg)
  foreach(size 48 128)
    execute_process(
      COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${made}/tarn-${size}.png
        ${PROJECT_SOURCE_DIR}/resources/tarn.svg
      COMMAND_ERROR_IS_FATAL ANY)
    install(FILES ${made}/tarn-${size}.png
      DESTINATION ${icons}/${size}x${size}/apps RENAME tarn.png)
  endforeach()
endif()
if(TARGET tarn_help)
  install(FILES ${PROJECT_BINARY_DIR}/src/app/ui/TARN.HLP DESTINATION ${data}/tarn)
endif()

set(CPACK_PACKAGE_NAME tarn)
set(CPACK_PACKAGE_VENDOR ${maintainer})
set(CPACK_PACKAGE_CONTACT ${TARN_MAINTAINER})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_THREADS 1)  # xz cuts its output differently for other numbers
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/package_times.cmake)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "train feed-forward neural networks on your own data")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Tarn finds out how some numbers depend on others. It reads plain text files
of examples, one a line, and trains multilayer feed-forward neural networks
on them by error backpropagation, with momentum, FAST-Prop and learn rate
control. While a network learns, its errors are shown on the examples it
learns from and on others that were held back to test it. Afterwards it
answers for new data.

This package holds the desktop program, tarn, with its graphs and reports,
and the command line, tarn-cli.")
include(CPack)

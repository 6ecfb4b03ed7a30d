# What the toolchain files of both Windows machines share. TARN_TRIPLET names the machine,
# TARN_MACHINE the folder of its libraries (scripts/windows/libraries).

set(CMAKE_SYSTEM_NAME Windows)
# The "-posix" compilers are the ones that have std::thread.
set(CMAKE_C_COMPILER ${TARN_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TARN_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${TARN_TRIPLET}-windres)

if(NOT TARN_WINDOWS_LIBRARIES)
  set(TARN_WINDOWS_LIBRARIES $ENV{TARN_WINDOWS_LIBRARIES})
endif()
if(NOT TARN_WINDOWS_LIBRARIES)
  set(cache $ENV{XDG_CACHE_HOME})
  if(NOT cache)
    set(cache $ENV{HOME}/.cache)
  endif()
  set(TARN_WINDOWS_LIBRARIES ${cache}/tarn-windows)
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TARN_WINDOWS_LIBRARIES)

set(TARN_WINDOWS_PREFIX ${TARN_WINDOWS_LIBRARIES}/${TARN_MACHINE})
set(CMAKE_FIND_ROOT_PATH ${TARN_WINDOWS_PREFIX} /usr/${TARN_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} ${TARN_WINDOWS_PREFIX}/lib/pkgconfig)
set(wxWidgets_CONFIG_EXECUTABLE ${TARN_WINDOWS_PREFIX}/bin/wx-config)

# What is built here may not run here: the tests are listed when they are run.
set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST)
# They run under wine, which has the whole disk as its drive Z:.
set(TARN_SOURCE_PREFIX "Z:" CACHE STRING "The drive that has the sources where the tests run")

# Programs that need no other file to run.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--gc-sections")
set(CMAKE_C_FLAGS_INIT "-ffunction-sections -fdata-sections")
set(CMAKE_CXX_FLAGS_INIT "-ffunction-sections -fdata-sections")

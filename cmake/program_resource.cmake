# tarn_program_resource(TARGET DESCRIPTION [WITH_CURSORS]): what Windows wants to know of a program,
# compiled into it: manifest, version, icon; and the cursors of the window library. Nothing
# elsewhere.
function(tarn_program_resource target description)
  if(NOT WIN32)
    return()
  endif()
  tarn_read_license(copyright publisher)
  set(include_cursors)
  if("WITH_CURSORS" IN_LIST ARGN)
    set(include_cursors "#include <wx/msw/wx.rc>")
  endif()
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/resources/windows/program.rc.in ${resource} @ONLY)
  set(files tarn.manifest tarn.ico)
  list(TRANSFORM files PREPEND ${PROJECT_SOURCE_DIR}/resources/windows/)
  set_source_files_properties(${resource} PROPERTIES OBJECT_DEPENDS "${files}")
  target_sources(${target} PRIVATE ${resource})
endfunction()

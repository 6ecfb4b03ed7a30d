# wxWidgets for the targets that have windows, and the resources that they are built from.

find_package(wxWidgets 3.2 REQUIRED COMPONENTS xrc html xml core base)
find_program(WXRC_EXECUTABLE wxrc REQUIRED)

add_library(tarn_wx INTERFACE)
target_include_directories(tarn_wx SYSTEM INTERFACE ${wxWidgets_INCLUDE_DIRS})
target_compile_definitions(tarn_wx INTERFACE ${wxWidgets_DEFINITIONS})
target_compile_options(tarn_wx INTERFACE ${wxWidgets_CXX_FLAGS})
target_link_libraries(tarn_wx INTERFACE ${wxWidgets_LIBRARIES})

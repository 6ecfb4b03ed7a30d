# What every target of the project shares: warnings, floating-point rules, sanitizers.

add_library(tarn_options INTERFACE)
target_compile_options(tarn_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual
  -Wconversion -Werror
  # g++ 12 sees overlapping copies in its own std::string (GCC bug 105329).
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  # Every float sum and product is rounded by itself: the same bits on every machine.
  -ffp-contract=off -fno-fast-math)

if(TARN_SANITIZE)
  target_compile_options(tarn_options INTERFACE
    -fsanitize=${TARN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tarn_options INTERFACE -fsanitize=${TARN_SANITIZE})
endif()

# tarn_module(NAME SOURCES ... USES ...): one folder of src/ as the static library
# tarn_NAME. USES lists the modules it may include; nothing else is on its path but src/.
function(tarn_module name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  add_library(tarn_${name} STATIC ${ARG_SOURCES})
  target_include_directories(tarn_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(tarn_${name} PRIVATE tarn_options PUBLIC ${ARG_USES})
endfunction()

# tarn_windows(NAME SOURCES ... USES ...): the windows of one module, src/NAME/ui, as the
# static library tarn_NAME_ui. USES lists modules; resources and wxWidgets come with it.
function(tarn_windows name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  add_library(tarn_${name}_ui STATIC ${ARG_SOURCES})
  target_include_directories(tarn_${name}_ui PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(tarn_${name}_ui PRIVATE tarn_options PUBLIC ${ARG_USES} tarn_resources)
endfunction()

# tarn_read_license(COPYRIGHT HOLDER): sets both to the line of the LICENSE, and to whom it names.
function(tarn_read_license copyright holder)
  file(STRINGS ${PROJECT_SOURCE_DIR}/LICENSE line REGEX "^Copyright" LIMIT_COUNT 1)
  string(REGEX REPLACE "^Copyright \\(c\\) [0-9, -]+ " "" name "${line}")
  set(${copyright} "${line}" PARENT_SCOPE)
  set(${holder} "${name}" PARENT_SCOPE)
endfunction()

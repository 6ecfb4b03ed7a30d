# Windows on 64-bit processors, with Debian's mingw-w64 compilers.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(TARN_TRIPLET x86_64-w64-mingw32)
set(TARN_MACHINE x64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)

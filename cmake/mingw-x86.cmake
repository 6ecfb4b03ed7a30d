# Windows on 32-bit processors, with Debian's mingw-w64 compilers.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(TARN_TRIPLET i686-w64-mingw32)
set(TARN_MACHINE x86)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)

# The 80-bit registers of the old coprocessor would round elsewhere than all other machines do. The
# system calls back with a stack that is not aligned as vectors need it.
string(APPEND CMAKE_C_FLAGS_INIT " -msse2 -mfpmath=sse -mstackrealign")
string(APPEND CMAKE_CXX_FLAGS_INIT " -msse2 -mfpmath=sse -mstackrealign")

# 4 GB instead of 2 where the system has 64 bits.
string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT " -Wl,--large-address-aware")

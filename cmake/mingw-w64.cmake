# 64-bit Windows from Debian's mingw-w64, the variant with POSIX threads (GoogleTest wants them).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(mingw_prefix x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER ${mingw_prefix}-g++-posix)
set(CMAKE_C_COMPILER ${mingw_prefix}-gcc-posix)
set(CMAKE_RC_COMPILER ${mingw_prefix}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${mingw_prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# Every program stands alone: no run-time library beside it but SciLexer.dll.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--gc-sections")

# Programs made by the cross build (the tests) run under Wine.
find_program(QUORVANE_WINE wine)
if(QUORVANE_WINE)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${QUORVANE_WINE})
endif()

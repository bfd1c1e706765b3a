# The handheld: Windows CE on ARM, from Debian's cross compiler for ARM Linux. The options make it
# follow the handheld's calling convention (arguments as one list of words, doubles at any multiple
# of 4, structures as small as their fields), on the oldest processor that a handheld has; there are
# no libraries behind it but those of handheld/*.def. Declarations are those of mingw-w64's headers,
# with handheld/include/ before them where the handheld differs.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(QUORVANE_HANDHELD TRUE)

set(arm_prefix arm-linux-gnueabi)
set(CMAKE_ASM_COMPILER ${arm_prefix}-gcc)
set(CMAKE_CXX_COMPILER ${arm_prefix}-g++)
set(CMAKE_OBJDUMP ${arm_prefix}-objdump)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)  # there is no program without an entry of ours

# The compiler says of each source that -mstructure-size-boundary is deprecated: it has no other
# way to the handheld's structures, and the message no name by which it could be turned off.
set(handheld_code
    -march=armv4 -marm -mno-thumb-interwork -mfloat-abi=soft -mabi=apcs-gnu
    -mstructure-size-boundary=8 -fshort-wchar -fsigned-char -fno-short-enums -ffreestanding
    -fno-pic -fno-pie -fno-stack-protector -fno-asynchronous-unwind-tables -fno-unwind-tables
    -ffunction-sections)
set(handheld_names
    -D_WIN32 -DWIN32 -DUNICODE -D_UNICODE -DWIN32_LEAN_AND_MEAN
    -D__cdecl= -D__stdcall= "'-D__declspec(x)='" "'-D__int64=long long'"
    -U__linux__ -Ulinux -U__unix__ -Uunix)

set(mingw_cxx /usr/lib/gcc/i686-w64-mingw32/12-posix/include/c++)
set(handheld_headers
    -nostdinc -nostdinc++
    -isystem ${CMAKE_CURRENT_LIST_DIR}/../handheld/include
    -isystem ${mingw_cxx} -isystem ${mingw_cxx}/i686-w64-mingw32
    -isystem /usr/share/mingw-w64/include
    -isystem /usr/lib/gcc-cross/${arm_prefix}/12/include)

list(JOIN handheld_code " " handheld_code)
list(JOIN handheld_names " " handheld_names)
list(JOIN handheld_headers " " handheld_headers)
set(CMAKE_CXX_FLAGS_INIT
    "${handheld_code} ${handheld_names} ${handheld_headers} -fno-exceptions -fno-rtti -fno-threadsafe-statics -fno-use-cxa-atexit")
set(CMAKE_ASM_FLAGS_INIT "-march=armv4 -mno-thumb-interwork -mabi=apcs-gnu -mfloat-abi=soft")

# Warnings are errors everywhere. Frames stay below the handheld's page of 4 KB (builds with
# sanitizers or without optimisation pad them and do not measure).
set(quorvane_warnings_on all extra pedantic shadow conversion sign-conversion)
add_library(quorvane_warnings INTERFACE)
list(TRANSFORM quorvane_warnings_on PREPEND -W OUTPUT_VARIABLE warnings)
target_compile_options(quorvane_warnings INTERFACE ${warnings})
if(QUORVANE_HANDHELD)
    # There the compiler also warns of one of its own options, whatever it is told.
    list(TRANSFORM quorvane_warnings_on PREPEND -Werror= OUTPUT_VARIABLE warnings)
    target_compile_options(quorvane_warnings INTERFACE ${warnings} -Werror=frame-larger-than=3500)
else()
    target_compile_options(quorvane_warnings INTERFACE -Werror)
endif()
if(NOT QUORVANE_SANITIZE AND NOT QUORVANE_COVERAGE)
    target_compile_options(quorvane_warnings INTERFACE -Wframe-larger-than=3500)
endif()

# What the engine and the shell give up so that they can run on the handheld: nothing is ever unwound,
# so there are no unwind tables either. In the small build functions share their file's section,
# because this linker pads each section by more than the few unused functions take. Data never has
# sections of its own: the arena's zeros would then be written into the Windows executable.
add_library(quorvane_portable INTERFACE)
target_compile_options(quorvane_portable INTERFACE
    -fno-exceptions -fno-rtti -fno-threadsafe-statics
    $<$<CONFIG:MinSizeRel>:-fno-asynchronous-unwind-tables>)
target_include_directories(quorvane_portable INTERFACE ${PROJECT_SOURCE_DIR})

# Quorvane.exe is made from all its sources as one piece, which leaves out what nothing in it calls
# and takes a tenth off its size. The same objects serve the tests as they are. (This linker's plugin
# crashes on them; without it the compiler does the same by itself.)
if(MINGW)
    target_compile_options(quorvane_portable INTERFACE
        $<$<CONFIG:MinSizeRel>:-flto -ffat-lto-objects>)
endif()
add_library(quorvane_one_piece INTERFACE)
target_link_options(quorvane_one_piece INTERFACE
    -flto=1 -flto-partition=none -fno-use-linker-plugin -fwhole-program)

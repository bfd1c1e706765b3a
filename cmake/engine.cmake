# The engine: portable, no platform header. An object library, because the engine and its host call
# each other and a linker reads archives one way only.
add_library(quorvane_engine OBJECT
    core/block_arena.cpp
    core/busy.cpp
    core/byte_stream.cpp
    core/errors.cpp
    core/names.cpp
    core/number_format.cpp
    core/number_parse.cpp
    core/paths.cpp
    core/recovery.cpp
    core/strings.cpp
    core/text.cpp
    web/cell_numbers.cpp
    web/cell_ops.cpp
    web/cell_text.cpp
    web/cells.cpp
    web/changed.cpp
    web/index.cpp
    web/link_list.cpp
    web/links.cpp
    web/option_text.cpp
    web/options.cpp
    web/report_selection.cpp
    web/steps.cpp
    web/trail.cpp
    web/value.cpp
    web/words.cpp
    report/output.cpp
    report/reports.cpp
    file/document.cpp
    file/save.cpp
    file/web_reader.cpp
    file/web_tags.cpp
    file/web_tokens.cpp
    file/web_writer.cpp
    file/written_names.cpp
    program/file_commands.cpp
    program/recovery.cpp)
target_link_libraries(quorvane_engine PUBLIC quorvane_warnings quorvane_portable)

# Engines that only tests run, and debug builds, overwrite what is in a block when it is released.
if(QUORVANE_SANITIZE OR QUORVANE_COVERAGE OR CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_compile_definitions(quorvane_engine PRIVATE QUORVANE_SPOIL_RELEASED)
endif()

# What reading changes, for the programs that ask; the window does not.
add_library(quorvane_read_watch OBJECT file/read_watch.cpp)
target_link_libraries(quorvane_read_watch PUBLIC quorvane_warnings quorvane_portable)

# How a web is saved, for tests/handheld, which has all that it calls.
add_library(quorvane_saving OBJECT EXCLUDE_FROM_ALL file/save.cpp)
target_link_libraries(quorvane_saving PRIVATE quorvane_warnings quorvane_portable)

# A program that links quorvane_whole_engine has the engine optimised as one piece when it is
# linked, calls across files included; with quorvane_whole_program its own sources are part of that
# piece. The others link the same objects as they are.
add_library(quorvane_whole_engine INTERFACE)
add_library(quorvane_whole_program INTERFACE)
target_link_libraries(quorvane_whole_program INTERFACE quorvane_whole_engine)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT CMAKE_CROSSCOMPILING
        AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug"
        AND NOT QUORVANE_SANITIZE AND NOT QUORVANE_COVERAGE)
    target_compile_options(quorvane_engine PRIVATE -flto -ffat-lto-objects)
    target_compile_options(quorvane_read_watch PRIVATE -flto -ffat-lto-objects)
    target_compile_options(quorvane_whole_program INTERFACE -flto)
    target_link_options(quorvane_whole_engine INTERFACE -flto=auto)
endif()
# The handheld's program is small first; what takes the time there is fast.
if(QUORVANE_HANDHELD)
    set_source_files_properties(
        core/block_arena.cpp core/byte_stream.cpp core/text.cpp file/save.cpp file/web_tokens.cpp
        report/output.cpp web/link_list.cpp web/links.cpp web/words.cpp
        PROPERTIES COMPILE_OPTIONS -O2)
endif()

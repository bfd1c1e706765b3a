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
    core/recovery.cpp
    core/strings.cpp
    core/text.cpp
    web/cell_numbers.cpp
    web/cell_ops.cpp
    web/cell_text.cpp
    web/cells.cpp
    web/index.cpp
    web/links.cpp
    web/option_tags.cpp
    web/options.cpp
    web/report_selection.cpp
    web/trail.cpp
    web/value.cpp
    web/words.cpp
    report/output.cpp
    report/reports.cpp
    file/document.cpp
    file/program_recovery.cpp
    file/safe_save.cpp
    file/web_reader.cpp
    file/web_tags.cpp
    file/web_tokens.cpp
    file/web_writer.cpp)
target_link_libraries(quorvane_engine PUBLIC quorvane_warnings quorvane_portable)

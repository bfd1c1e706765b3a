// A web file dropped on the window.
#include "desktop/frame.h"

#include "core/errors.h"
#include "file/document.h"
#include "platform/windows/text_conversion.h"
#include "shell/commands.h"
#include "shell/guard.h"

static struct DroppedFiles { char path[k_path_max + 1]; } dropped;

namespace {

void open_body(void *) {
    open_web_path(dropped.path);
}

}  // namespace

// Part of a path would be another file.
void open_dropped_file(const wchar_t *path) {
    if (utf8_size(path) > k_path_max) {
        report_error(k_cannot_open_web);
        return;
    }
    utf8_copy(dropped.path, sizeof dropped.path, path);
    run_guarded(open_body, nullptr);
}

#include "web/changed.h"

static struct Changed { bool web; } changed_flag;

bool web_changed() {
    return changed_flag.web;
}

void set_web_changed(bool changed) {
    changed_flag.web = changed;
}

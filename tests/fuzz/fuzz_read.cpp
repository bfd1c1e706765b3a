// Any bytes read as a web leave the arena whole, and what is then written reads back to the same
// file.
#include "tests/fuzz/fuzz_target.h"

#include "tests/engine/engine_test.h"

#include "file/read_watch.h"
#include "web/option_text.h"

namespace {

void read_and_check(const std::string &bytes, bool ours) {
    int code = parse_web(bytes);
    require(code == 0 || (code == -44 && !ours), "a wrong code");
}

bool found;

void note_found(const ReadNote *note) {
    found |= note->finding != ReadFinding::option;
}

// Somebody who watches changes nothing, and hears of whatever is lost.
void watch_and_compare(const std::string &bytes) {
    read_and_check(bytes, false);
    const std::string web = written_web();
    const bool whole = web_read_was_whole();
    found = false;
    web_read_observe(note_found);
    read_and_check(bytes, false);
    web_read_observe(nullptr);
    require(written_web() == web, "another web when watched");
    require(web_read_was_whole() == whole, "whole or not when watched");
    require(whole || found, "a loss without a finding");
}

// A number too long for fixed form is rounded by its exponent form, and what it then is may fit.
bool keeps_its_text(double number) {
    const std::string text = option_number_text(number);
    double read = 0;
    number_parse(text.c_str(), &read);
    return option_number_text(read) == text;
}

// Such numbers change, long names are cut and an interval of 0 is raised when they are read the
// next time.
bool is_settled(const Names &names) {
    for (const std::string &name : names) {
        if (name.size() > k_cellname_max) {
            return false;
        }
    }
    return option_xintrvls() != 0 && option_yintrvls() != 0 && keeps_its_text(option_xmax()) &&
           keeps_its_text(option_xmin()) && keeps_its_text(option_ymax()) &&
           keeps_its_text(option_ymin());
}

}  // namespace

const size_t k_longest_input = 20000;  // surely fits the arena

void run_target(FuzzInput input) {
    watch_and_compare(std::string(input));
    Names names = cell_names();
    if (!is_settled(names)) {
        read_and_check(written_web(), true);
        require(cell_names().size() == names.size(), "fewer cells");
        names = cell_names();
    }
    const std::string first = written_web();
    read_and_check(first, true);
    require(cell_names() == names, "other cells");
    require(written_web() == first, "the second file differs from the first");
    read_and_check(std::string(input), false);  // whose order is looked at behind this
}

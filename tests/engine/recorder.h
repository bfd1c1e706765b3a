// The test program's host: what core/host_messages.h, host_view.h and host_files.h leave to the
// program, with a log of the calls, answers given beforehand, and models of the text pane, the cell
// list and the console.
//
// The log has a line a call, in order: the function's short name and its arguments, such as
// "ask_yes_no No such cell. Create it?|foo" or "store 1". A cell is named by its name, none by "-".
// Not logged: console_insert, pump_messages and files by path.
#pragma once

#include "core/host_messages.h"
#include "core/host_view.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

struct TextPane {
    std::string text;
    bool modified;
    CellHandle shown;  // the cell whose name and text it shows
};

struct Recorder {
    std::vector<std::string> log;
    std::vector<std::string> faults;  // what no host should ever see; a test that has one fails

    // Answers, taken from the front; with none left, or "", the answer is no, or cancel.
    std::deque<bool> ok_cancel, yes_no, save_changes;
    std::deque<std::string> cellnames, open_paths, save_paths;

    TextPane pane;
    std::map<ListItem, CellHandle> items;  // of the cell list; a token is the handle, as in shell/
    ListItem selected_item;
    std::string console;
    std::string selected_text;  // in the active pane
    std::string status;         // the last transient message
    std::string resting;
    std::string title;

    uint32_t pumps;                 // calls of pump_messages() so far
    std::function<void()> on_pump;  // runs in each of them
    bool logs_offers;               // to save and exit, too
};

Recorder &host();

// Brings the engine and the host to where they are after start-up: an untitled web of one cell,
// "home", in a fresh arena; empty log.
void start_program();

// Runs the body; the status that the program ended with, or nothing when the body came back.
std::optional<int> run_until_end(const std::function<void()> &body);

// Runs the body; the check (core/check.h) that it failed, without the line's number, or "" when it
// failed none. What the body left half done is the caller's to forget: start_program().
std::string run_until_check_fails(const std::function<void()> &body);

// Runs the body as the window runs a command: under a recovery point, with program_recover() after
// a jump. False when there was one.
bool run_command(const std::function<void()> &body);

// Types into the text pane: its text becomes this one, and both it and the web count as changed.
void type_text(const std::string &text);

// Runs this in the n-th call of pump_messages() from now on.
void at_pump(uint32_t n, const std::function<void()> &run);

// Gives a cell that was made behind the cell list's back its item; not logged.
void insert_list_item(CellHandle cell);

// The cell list has exactly the live cells, each under the token that its record holds; "" or what
// is wrong.
std::string check_cell_list();

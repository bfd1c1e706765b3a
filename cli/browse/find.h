// Finding a text in the cells' texts, letters regardless of case.
#pragma once

#include <string>

// Finds it behind what was found last, or from what is on the screen, in this cell's text and then
// in the others' in the web's order, round at the end. Goes there and marks it. False when it is
// nowhere.
bool find_next(const std::string &wanted);

// How text looks: the styles, their fonts on the screen, and how wide characters are in them.
#pragma once

#include "pane/pane.h"

void styles_init(Styles *look);
void styles_free(Styles *look);

// The style of a number: 0 to 7, or STYLE_DEFAULT; others are as style 0.
uint32_t style_slot(uint32_t style);

// All styles become as STYLE_DEFAULT.
void styles_clear_all(Styles *look);

// The fonts are made anew when they are asked for next.
void styles_changed(Styles *look);

// Makes the fonts if need be.
void styles_prepare(Styles *look);

const Font *style_font(const Styles *look, uint32_t slot);

// How wide a character is, its name if it has no shape.
uint32_t character_width(Styles *look, uint32_t slot, uint32_t code);

// The name that stands for a control character or a bad byte; empty for any other. In one static
// buffer.
const wchar_t *character_name(uint32_t code);

// How far a name stands from the borders of what it is drawn on, both together.
constexpr uint32_t k_name_borders = 3;

// Every identifier of the program's resources, commands and controls, for the resource compiler and
// for the sources alike; hence macros and nothing else.
#pragma once

// ---- Resources ----------------------------------------------------------------------------------

#define RES_MAIN_BAR 75  // menu and tool bar of the menu bar
#define RES_BAR_IMAGES 112
#define BAR_IMAGE_COUNT 10
#define BAR_IMAGE_WIDTH 16
#define BAR_IMAGE_HEIGHT 15

// Images of the bars, by position in the bitmap.
#define BAR_IMAGE_BACK 0
#define BAR_IMAGE_FOLLOW 1
#define BAR_IMAGE_REPORT 2
#define BAR_IMAGE_WEB 4

// Named resources: the icon and the accelerators are both called "QUORVANE", the dialogs
// "CELLNAME", "REPLBOX", "NXTBOX", "FONTBOX", "ABOUTBOX" and "ABORTBOX", the pages of the settings
// sheet "REPORTPAGE", "OUTPUTPAGE", "LINKSPAGE", "NUMBERSPAGE", "PANEPAGE" and "SEARCHPAGE".

// ---- Commands -----------------------------------------------------------------------------------

#define CMD_FILE_NEW 14
#define CMD_FILE_OPEN 15
#define CMD_FILE_SAVE 16
#define CMD_FILE_SAVE_AS 17
#define CMD_REPORT 19
#define CMD_QUIT 20
#define CMD_SELECT_ALL 22
#define CMD_CUT 23
#define CMD_COPY 24
#define CMD_PASTE 25
#define CMD_DELETE 26
#define CMD_UNDO 27
#define CMD_REDO 28  // a key alone
#define CMD_FIND 30
#define CMD_SETTINGS 33
#define CMD_ZOOM 34
#define CMD_CELL_NEW 40
#define CMD_CELL_CLONE 41
#define CMD_CELL_DELETE 42
#define CMD_CELL_PREVIOUS 43
#define CMD_CELL_NEXT 44
#define CMD_BACK 45
#define CMD_FOLLOW 46
#define CMD_HELP_OVERVIEW 60
#define CMD_HELP_REPORT_FORMAT 61
#define CMD_HELP_ABOUT 74
#define CMD_NEXT_PANE 75
#define CMD_SPARE_BUTTON 207  // no handler serves it
#define CMD_CLOSE_MODELESS 40018
#define CMD_HELP_MORE 40032

// ---- Controls of the main window; as commands they carry the controls' notifications ------------

#define CTL_NAVIGATION 81
#define CTL_CELLNAME_BOX 82
#define CTL_CELL_LIST 84
#define CTL_TEXT_PANE 85
#define CTL_STATUS_LINE 88
#define CTL_CONSOLE_PANE 90
#define CTL_TABS 91

// ---- Controls of the dialogs, beside IDOK and IDCANCEL ------------------------------------------

#define CTL_NEW_CELLNAME 1000

#define CTL_REPLACE_CANCEL 3
#define CTL_REPLACE_TEXT 1099
#define CTL_SEARCH_LABEL 1100
#define CTL_REPLACE_LABEL 1101
#define CTL_REPLACE_START 1102  // taken like IDOK; no control has it
#define CTL_SEARCH_TEXT 1105
#define CTL_SEARCH_CASE 1107

#define CTL_NEXT_FIND 1118
#define CTL_NEXT_REPLACE 1119
#define CTL_NEXT_CASE 1120

#define CTL_ZOOM_FACTOR 1121

// ---- Controls of the settings sheet; its Search page has those of the Replace dialog ------------

#define CTL_REPORT_FORMATTED 1201
#define CTL_REPORT_IN_POINTERS 1202
#define CTL_REPORT_OUT_POINTERS 1203
#define CTL_REPORT_TRAIL 1204
#define CTL_REPORT_FORMAT 1205
#define CTL_REPORT_ALL 1206

#define CTL_OUTPUT_CONSOLE 1211
#define CTL_OUTPUT_FILE 1212
#define CTL_OUTPUT_NAME 1213
#define CTL_OUTPUT_LF 1214
#define CTL_OUTPUT_CR 1215
#define CTL_OUTPUT_CRLF 1216

#define CTL_LINKS_RED 1221
#define CTL_LINKS_GREEN 1222
#define CTL_LINKS_BLUE 1223
#define CTL_LINKS_BLACK 1224
#define CTL_LINKS_SAMPLE_RED 1225  // the samples follow each other, like the colours
#define CTL_LINKS_SAMPLE_GREEN 1226
#define CTL_LINKS_SAMPLE_BLUE 1227
#define CTL_LINKS_SAMPLE_BLACK 1228
#define CTL_LINKS_CREATE 1229
#define CTL_LINKS_ASK 1230

#define CTL_NUMBERS_FIXED 1231
#define CTL_NUMBERS_EXPONENT 1232
#define CTL_NUMBERS_GENERAL 1233
#define CTL_NUMBERS_DIGITS 1234
#define CTL_NUMBERS_DEGREES 1235
#define CTL_NUMBERS_RADIANS 1236

#define CTL_PANE_FONT 1241
#define CTL_PANE_SIZE 1242
#define CTL_PANE_BOLD 1243
#define CTL_PANE_ITALIC 1244

// ---- Strings ------------------------------------------------------------------------------------

#define STR_HELP_PROGRAM 6
#define STR_HELP_CELL 7
#define STR_HELP_WRITE_TO 8
#define STR_HELP_CONTACT 9
#define STR_HELP_READ_AT 10
#define STR_HELP_SITE 11
#define STR_HELP_NAME 12
#define STR_HELP_UNIQUE 15
#define STR_HELP_FORMAT 16
#define STR_HELP_SUBSTITUTION 17
#define STR_HELP_SEQUENCES 18
#define STR_HELP_SEQUENCE_NEWLINE 19
#define STR_HELP_SEQUENCE_TEXT 20
#define STR_HELP_SEQUENCE_NAME 21
#define STR_HELP_SEQUENCE_OTHER 22
#define STR_HELP_PANES 25
#define STR_HELP_CELL_LIST 26
#define STR_HELP_LINKS 27
#define STR_HELP_DOUBLE_CLICK 28
#define STR_HELP_SETTINGS 29
#define STR_HELP_REPORTS 30
#define STR_HELP_TEXT 31
#define STR_HELP_CONSOLE 32

#define STR_MENU_FILE 170
#define STR_MENU_EDIT 171
#define STR_MENU_CELL 172
#define STR_MENU_HELP 173

// What a tool bar's button says of itself, by its command.
#define STR_TIP 300
#define STR_TIP_REPORT (STR_TIP + CMD_REPORT)
#define STR_TIP_SPARE_BUTTON (STR_TIP + CMD_SPARE_BUTTON)
#define STR_TIP_BACK (STR_TIP + CMD_BACK)
#define STR_TIP_FOLLOW (STR_TIP + CMD_FOLLOW)

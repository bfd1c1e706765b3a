// The settings sheet.
#pragma once

// Opens the property sheet that edits the options; returns when the user has closed it.
void open_settings_sheet();

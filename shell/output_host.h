// Report output seen from the window: the messages let through meanwhile, and quitting in the
// middle. pump_messages(), output_began() and output_ended() of core/host_messages.h are defined
// here.
#pragma once

// Ends the report under way; the program is then asked to quit again. False when no output is under
// way.
bool quit_after_output();

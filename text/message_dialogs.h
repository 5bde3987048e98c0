// The two message dialogs. Both block in a nested main loop until the user has closed them: timers
// go on firing in the meantime.
#pragma once

// An error dialog with one UTF-8 text and a Close button. The text is used as a printf format
// without arguments, which the string tables are written for: it must not hold a percent sign.
void ShowMessage(const char *text);

// An information dialog with a headline, a secondary text and a Close button; both texts are UTF-8
// formats without arguments, as above.
void ShowInfoMessage(const char *primary, const char *secondary);

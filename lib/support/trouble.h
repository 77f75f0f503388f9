// Trouble on loading: something that is there could not be read, for want of memory or descriptors or because
// a disk fails. What was loaded may then lack shares or accounts, and must not be stored: the files know
// better.
#pragma once

namespace nasshare {

// Forgets earlier trouble; called where an operation that will store begins.
void load_begins();

void note_trouble();

// Notes trouble when the errno of a file or device says so. That there is none, that it is of another kind or
// not for this user is a fact and no trouble; whatever else went wrong may pass, or hides what is there.
void note_file_error();

// The same for a question to a database of settings or accounts. What answers such questions leaves much in
// errno that means "unknown": only a shortage or a failing disk is trouble; for accounts, also that the
// service behind them says "try again".
void note_setting_error();
void note_account_error();

bool load_was_troubled();

} // namespace nasshare

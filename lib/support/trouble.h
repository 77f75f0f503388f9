// Trouble on loading: something that is there could not be read, for want of memory or descriptors or because
// a disk fails. What was loaded may then lack shares or accounts, and must not be stored: the files know
// better.
#pragma once

namespace nasshare {

// Forgets earlier trouble; called where an operation that will store begins.
void load_begins();

void note_trouble();

// Notes trouble when errno says so; an absent file or an unknown name is none.
void note_trouble_of_errno();

bool load_was_troubled();

} // namespace nasshare

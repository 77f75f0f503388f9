// Trouble on loading: something that is there could not be read, for want of memory or descriptors or because
// a disk fails. What was loaded may then lack shares or accounts, and must not be stored: the files know
// better.
#pragma once

namespace nasshare {

// Forgets earlier trouble; called where an operation that will store begins.
void load_begins();

void note_trouble();

// Shares may be missing, because a volume cannot be read, but those that were loaded are right.
void note_missing();

// Notes trouble when the errno of a file or device says so. That there is none, that it is of another kind or
// not for this user is a fact and no trouble. A shortage of memory or descriptors is; whatever else went
// wrong hides what is there, and it is missing.
void note_file_error();

// The same for a question to a database of settings or accounts. What answers such questions leaves much in
// errno that means "unknown": only a shortage or a failing disk is trouble; for accounts, also that the
// service behind them says "try again".
void note_setting_error();
void note_account_error();

bool load_was_troubled();

// Whether what was loaded may be wrong, such as short of accounts that are denied, and must not be published
// either; missing shares are no reason to publish none.
bool load_is_doubtful();

// What goes wrong during its life concerns nothing that is stored or published.
class TroubleApart {
public:
  TroubleApart();
  TroubleApart(const TroubleApart &) = delete;
  TroubleApart &operator=(const TroubleApart &) = delete;
  ~TroubleApart();

private:
  bool doubtful_;
  bool missing_;
};

} // namespace nasshare

// Trouble: something that is there could not be read, for want of memory or descriptors or because a disk
// fails. What was loaded may then lack records or accounts and must not be stored: the files know better. A
// watch sees the trouble that is noted during its life, which is that of the load or the write that it
// judges.
#pragma once

#include <cerrno>

namespace nasshare {

struct Trouble {
  bool is_doubtful = false; // what was loaded may be wrong, such as short of accounts that are denied
  bool lacks_some = false;  // records may be missing, but those that were loaded are right

  explicit operator bool() const { return is_doubtful || lacks_some; }
  Trouble &operator|=(const Trouble &other);
};

// Watches lie within each other as the blocks that hold them do. What one sees is seen by the one around it
// too, unless it watches apart, for what concerns nothing that is stored or published.
class Watch {
public:
  enum class Scope { shared, apart };

  explicit Watch(Scope scope = Scope::shared);
  // A watch whose verdict is kept for a write that comes later, added to what is kept there already. It is
  // kept at once, since an operation may end the process.
  explicit Watch(Trouble &kept);
  Watch(const Watch &) = delete;
  Watch &operator=(const Watch &) = delete;
  ~Watch();

  [[nodiscard]] const Trouble &seen() const { return seen_; }

private:
  friend void note(const Trouble &trouble);

  void see(const Trouble &trouble);

  Watch *outer_;
  Scope scope_ = Scope::shared;
  Trouble *kept_ = nullptr;
  Trouble seen_;
};

// Each of these tells the innermost watch, and so those around it; nobody when there is none.
void note(const Trouble &trouble);
void note_doubt();
void note_lack();

// Notes the error of a file or device, unless it states a fact: that there is none, that it is of another
// kind or not for this user. A shortage of memory or descriptors is doubt; whatever else went wrong hides
// what is there.
void note_file_error(int error = errno);

// The same for a question to a database of settings or of accounts. What answers such questions leaves much
// in errno that means "unknown": only a shortage or a failing disk is doubt; for accounts, also that the
// service behind them says "try again".
void note_setting_error(int error = errno);
void note_account_error(int error = errno);

} // namespace nasshare

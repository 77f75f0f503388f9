// The list of shares: one record per name, found by it exactly; and what a record becomes when it is put
// there.
#include "catalogue/share_list.h"

#include "acl/access_list.h"
#include "base/debug.h"
#include "base/linked_list.h"
#include "base/text.h"
#include "model/load_verdict.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"

#include <cstdio>

namespace nasshare {
namespace {

// Sets every field. Every listed share is browseable and public, whatever the source says: a stored "no" does
// not survive.
void copy_record(smb_share &to, const smb_share &from) {
  to.volume_raid = from.volume_raid;
  assign(to.hd_serial, view(from.hd_serial));
  assign(to.name, view(from.name));
  assign(to.comment, view(from.comment));
  assign(to.path, view(from.path));
  assign(to.browseable, "yes");
  assign(to.public_, "yes");
  assign(to.oplocks, view(from.oplocks));
  assign(to.map_archive, view(from.map_archive));
  assign_list(to.read_list, view(from.read_list));
  assign_list(to.write_list, view(from.write_list));
  assign_denied_or_note(to.invalid_users, view(from.invalid_users));
  assign_list(to.valid_users, view(from.valid_users));
  rw_list_rule(&to);
  to.recycle_enable = from.recycle_enable;
  to.recycle_tree = from.recycle_tree;
}

// The name as the list holds it, should the caller's field lack a terminator.
std::string_view listed_name(const smb_share &record) {
  return cut_text(view(record.name), name_width - 1);
}

smb_share *find_share(std::string_view name) {
  if (name.empty()) {
    return nullptr;
  }
  return find(*pss, [name](const smb_share &share) { return view(share.name) == name; });
}

void print(const smb_share &share) {
  std::printf("volume_raid     : [%d]\n", share.volume_raid);
  std::printf("hd_serial       : [%s]\n", share.hd_serial);
  std::printf("name            : [%s]\n", share.name);
  std::printf("comment         : [%s]\n", share.comment);
  std::printf("path            : [%s]\n", share.path);
  std::printf("browseable      : [%s]\n", share.browseable);
  std::printf("public          : [%s]\n", share.public_);
  std::printf("oplocks         : [%s]\n", share.oplocks);
  std::printf("map_archive     : [%s]\n", share.map_archive);
  std::printf("read_list       : [%s]\n", share.read_list);
  std::printf("write_list      : [%s]\n", share.write_list);
  std::printf("invalid_users   : [%s]\n", share.invalid_users);
  std::printf("valid_users     : [%s]\n", share.valid_users);
  std::printf("recycle_enable  : [%d]\n", share.recycle_enable);
  std::printf("recycle_tree    : [%d]\n\n", share.recycle_tree);
}

} // namespace

smb_share *append_share_or_note(const smb_share &record) {
  auto *const share = record.name[0] == '\0' ? nullptr : new_node_or_note<smb_share>();
  if (share != nullptr) {
    copy_record(*share, record);
    append(*pss, share);
  }
  return share;
}

} // namespace nasshare

using namespace nasshare;

smb_share *check_smb_share_name(const char *name) {
  return name == nullptr ? nullptr : find_share(name);
}

smb_share *Insert_Smb_Node(const smb_share *record) {
  if (record == nullptr) {
    return nullptr;
  }
  const LoadWatch watch;
  auto *const listed = find_share(listed_name(*record));
  return listed != nullptr ? listed : append_share_or_note(*record);
}

smb_share *Modify_Smb_Node(const smb_share *record) {
  const LoadWatch watch;
  auto *const share = record == nullptr ? nullptr : find_share(listed_name(*record));
  if (share != nullptr) {
    copy_record(*share, *record);
  }
  return share;
}

void Dup_Smb_Struct(smb_share *destination, const smb_share *source) {
  if (destination != nullptr && source != nullptr) {
    const LoadWatch watch;
    copy_record(*destination, *source);
  }
}

void Remove_Smb_Node_By_Name(const char *name) {
  remove(*pss, check_smb_share_name(name));
}

void Remove_Smb_Node(smb_share *record) {
  remove(*pss, record);
}

void Free_All_List(void) {
  clear(*pss);
}

int Is_Smb_Empty(void) {
  return pss->count == 0 ? 1 : 0;
}

void List_Smb_Node(void) {
  if (!is_listing()) {
    return;
  }
  std::printf("\n");
  std::ranges::for_each(each(*pss), print);
}

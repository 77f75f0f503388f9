// nasshare-diag: drives single operations of the library against the live system with fixed test data. Each
// option acts at once, in the order given, so that "-d -e" lists the catalogue with debug output.
#include "base/text.h"
#include "nasshare/nasshare.h"
#include "standard_streams.h"

#include <cstdio>
#include <unistd.h>

namespace nasshare {
namespace {

void add_test_share(std::string_view name, std::string_view comment, std::string_view path,
                    std::string_view write_list) {
  static smb_share share; // too large for a small stack
  share = {};
  assign(share.name, name);
  assign(share.comment, comment);
  assign(share.path, path);
  assign(share.oplocks, "no");
  assign(share.map_archive, "no");
  assign(share.write_list, write_list);
  add_share(&share);
}

void list_catalogue() {
  get_samba_info2();
  List_Smb_Node();
  Free_All_List();
}

void split_test_list() {
  char list[] = "#roy#,#@gr oup#,#abc#,#aaa#,#bbb#,#ccc#,#amy#";
  std::printf("test_str=[%s]\n", list);
  for (char *token = smb_strtok(list, "#,"); token != nullptr; token = smb_strtok(nullptr, "#,")) {
    std::printf("@-[%s]\n", token);
  }
}

void change_test_account() {
  insert_acnt_node("Volume_1", 3);
  insert_acnt_node("Volume_2", 2);
  insert_acnt_node("Volume_3", 2);
  acnt_mod_share("z700");
}

void add_test_dfs_group() {
  char group[4096] = "~!@#$%^&avc"; // the width that the escaping asks for
  std::printf("[%s]\n", group);
  convert_xml_special_char(group);
  add_dfs_group_node(group);
  if (chk_dfs_group_exist(group) == 1) {
    std::puts("true");
  }
}

void act(int option) {
  switch (option) {
  case 'd':
  case 'D':
    std::puts("OPEN DEBUG MODE!!");
    smb_dbg_flag = 1;
    break;
  case 'a': // special characters of shell and XML
    add_test_share("~`!@#$^&()_-',.a", "it is test 1", "/mnt/HD/HD_a2/~`!@#$^&()_-+=',.a",
                   "#nobody#,#@allaccount#");
    break;
  case 'b':
    del_share("test test");
    break;
  case 'c':
    change_test_account();
    break;
  case 'e':
    list_catalogue();
    break;
  case 'f':
    split_test_list();
    break;
  case 'r':
    add_test_share("RRRRRRRRRRRRRR", "it is test RRRRRR", "/mnt/HD/HD_a2/recycle", "");
    break;
  case 's':
    ads_start();
    break;
  case 't':
    add_test_dfs_group();
    break;
  case 'x':
    add_test_share("test", "it is a test", "/mnt/HD/HD_a2/test", "");
    break;
  default: // unknown options are ignored
    break;
  }
}

} // namespace
} // namespace nasshare

int main(int argc, char **argv) {
  nasshare::cli::open_standard_streams();
  opterr = 0;
  constexpr const char *options = "dDabcefsrxt";
  for (int option = getopt(argc, argv, options); option != -1; option = getopt(argc, argv, options)) {
    nasshare::act(option);
  }
  if (!nasshare::cli::has_printed_all()) {
    std::fputs("nasshare-diag: the output could not be written\n", stderr);
    return 1;
  }
  return 0;
}

/*
 * A host program that has functions of its own by the name of every exported one. The library, which it loads
 * itself, must not call any of them.
 */
#include <dlfcn.h>
#include <nasshare/nasshare.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static void *library;

static void *operation(const char *name) {
  void *const address = dlsym(library, name);
  if (address == NULL) {
    fprintf(stderr, "%s\n", dlerror());
    exit(1);
  }
  return address;
}

#define CALL(name) ((__typeof__(&name))operation(#name))

static void expect(const char *what, long answer, long wanted) {
  if (answer != wanted) {
    fprintf(stderr, "%s answered %ld\n", what, answer);
    exit(1);
  }
}

static struct smb_share share;

static void change_shares(void) {
  strcpy(share.name, "Music");
  strcpy(share.path, "/mnt/HD/HD_a2/music");
  strcpy(share.read_list, "#bob#,#@staff#");
  strcpy(share.write_list, "#alice#");
  strcpy(share.oplocks, "yes");
  strcpy(share.map_archive, "no");
  share.recycle_enable = 1;
  expect("add_share", CALL(add_share)(&share), 1);
  strcpy(share.comment, "all & more");
  expect("mod_share", CALL(mod_share)(&share), 1);
  CALL(insert_acnt_node)("Music", 3);
  expect("acnt_mod_share", CALL(acnt_mod_share)("carol"), 1);
  expect("chk_share", CALL(chk_share)("Music"), 0);
  strcpy(share.name, "Films");
  expect("add_share", CALL(add_share)(&share), 1);
  expect("del_share", CALL(del_share)("Films"), 1);
  expect("check_user_in_list", CALL(check_user_in_list)("#@staff#", "bob"), 1);
}

static void publish(void) {
  CALL(get_samba_info2)();
  CALL(create_p2p_share)();
  CALL(create_iso_share)();
  CALL(create_amule_share)();
  expect("create_smb_conf", CALL(create_smb_conf)(), 0);
  CALL(Free_All_List)();
}

static void change_namespace(void) {
  expect("add_dfs_group_node", (long)CALL(add_dfs_group_node)("Media"), 1);
  expect("add_dfs_node", (long)CALL(add_dfs_node)("nas1", "music", "songs", "Media"), 1);
  expect("mod_dfs_group_node", (long)CALL(mod_dfs_group_node)("Media", "Leisure"), 1);
  expect("chk_dfs_node_exist", (long)CALL(chk_dfs_node_exist)("Leisure", "songs"), 1);
  CALL(create_dfs_link)();
}

int main(void) {
  library = dlopen("libnasshare.so.1", RTLD_NOW | RTLD_LOCAL);
  if (library == NULL) {
    fprintf(stderr, "%s\n", dlerror());
    return 1;
  }
  change_shares();
  publish();
  change_namespace();
  CALL(ads_start)();
  CALL(get_host_share_name)("nowhere.invalid");
  return 0;
}

// A small appliance and the changes to its stored files.
#include "changes.h"

#include "appliance.h"
#include "dfs_files.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "nasshare/dfs.h"
#include "nasshare/platform.h"
#include "paths.h"
#include "share.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace nasshare::tests {

namespace {

using Paths = std::array<std::string, 2>;

const Paths share_files{first_share_file, second_share_file};
const Paths domain_files{first_domain_file, second_domain_file};

Share music() {
  return stored_share("Music").read("#alice#").write("#bob#").deny("#nobody#");
}

Share photos() {
  return stored_share("Photos", 1).everyone();
}

Share docs() {
  return stored_share("Docs", 1).write("#@staff#").deny("#nobody#,#carol#");
}

using Shares = std::vector<Share>;

Shares shares_before() {
  return {music(), photos(), docs()};
}

// ---- What follows: one more share, which a whole load puts behind those of both volumes.

Share one_more() {
  return stored_share("Videos").write("#bob#").deny("#nobody#");
}

int add_one_more() {
  return add_share(
      Share{"Videos"}.path("/mnt/HD/HD_a2/Videos").write("#bob#").oplocks("yes").map_archive("no"));
}

// The shares that a file gives its own volume when it is loaded.
void load(Shares &list, std::size_t volume, const Shares &file) {
  const std::string serial = stored_share("", static_cast<int>(volume)).record().hd_serial;
  std::ranges::copy_if(file, std::back_inserter(list),
                       [&serial](const Share &share) { return share.record().hd_serial == serial; });
}

// `loaded` is what `stored` becomes when it is loaded again.
Change share_change(const std::string &name, const std::function<int()> &run, const Shares &stored,
                    const Shares &loaded, const Paths &paths = share_files,
                    const Shares &before = shares_before()) {
  Change change{name, [] {}, run, {}, add_one_more, {}};
  for (const std::string &path : paths) {
    change.after[path] = share_xml(stored);
  }
  const auto shown = [=](const Files &now) {
    Shares list;
    for (std::size_t volume = 0; volume < paths.size(); ++volume) {
      const bool is_new = now.at(paths[volume]) == share_xml(stored);
      load(list, volume, is_new ? loaded : before);
    }
    return list;
  };
  change.is_shown = [=](const Files &now) {
    const bool are_there =
        std::ranges::all_of(paths, [&now](const auto &path) { return now.contains(path); });
    return are_there && share_xml(shown(now)) == share_xml(shown(change.after));
  };
  change.after_next = [=](const Files &now) {
    Shares list = shown(now);
    list.push_back(one_more());
    Files next = now;
    for (const std::string &path : paths) {
      next[path] = share_xml(list);
    }
    return next;
  };
  return change;
}

// ---- The DFS files and the configuration: the next change puts its own text into the old or new file.

std::string replaced(std::string text, const std::string &old, const std::string &fresh) {
  const std::size_t place = text.find(old);
  return place == std::string::npos ? "no " + old : text.replace(place, old.size(), fresh);
}

std::function<Files(const Files &)> replacing_in(const std::string &path, const std::string &old,
                                                 const std::string &fresh) {
  return [=](Files files) {
    files[path] = replaced(files.at(path), old, fresh);
    return files;
  };
}

const Links links_before{{"nas1", "music", "songs", "Media"}, {"nas2", "docs", "papers", "Work"}};

std::string configuration_before(int domain_mode) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<config>\n  <system_mgr>\n    <samba>\n"
         "      <workgroup>HOME</workgroup>\n      <netbios_name>cellar</netbios_name>\n"
         "      <server_string>Storage in the cellar</server_string>\n      <ads_enable>" +
         std::to_string(domain_mode) + "</ads_enable>\n    </samba>\n  </system_mgr>\n</config>\n";
}

int add_a_link_more() {
  return static_cast<int>(add_dfs_node("nas9", "last", "last", "Work"));
}

std::function<Files(const Files &)> with_a_link_more() {
  return replacing_in(link_path, "  </dfs>\n", link_item({"nas9", "last", "last", "Work"}) + "  </dfs>\n");
}

Files make_appliance_in(int domain_mode) {
  Appliance machine = Appliance::single_disks();
  // Commands that take as little time as can be, in one write.
  machine.script("sg_scan",
                 "printf '/dev/sda: scsi0 channel=0 id=0 lun=0 [em]\\n/dev/sdb: scsi1 channel=0 id=0 "
                 "lun=0 [em]\\n'");
  machine.script("smbcom", ":");
  for (const Share &share : {stored_share("Music"), stored_share("Videos"), stored_share("Photos", 1),
                             stored_share("Docs", 1), stored_share("Films", 1)}) {
    machine.folder(share.record().path);
  }
  machine.file(config_database, configuration_before(domain_mode));
  machine.file(link_path, link_file(links_before)).file(group_path, group_file({"Media", "Work"}));
  machine.shares(share_xml(shares_before()));
  return stored_files();
}

// Accounts that only the domain knows.
Shares domain_shares_before() {
  return {stored_share("Music").read("#dora#").write("#@Sales Team#").deny("#nobody#"),
          stored_share("Docs", 1).write("#dora#").deny("#nobody#")};
}

} // namespace

Files make_appliance() {
  return make_appliance_in(0);
}

Files make_domain_appliance() {
  make_appliance_in(1);
  Appliance{}.ads_shares(share_xml(domain_shares_before())).script("smbcom", ":");
  return stored_files();
}

// Everyone but carol: the accounts are read one by one.
Change adding_a_share() {
  const Share record =
      Share{"Films"}.path("/mnt/HD/HD_b2/Films").everyone().deny("#carol#").oplocks("yes").map_archive("no");
  const auto run = [record] { return add_share(record); };
  Shares after = shares_before();
  after.push_back(stored_share("Films", 1).write("#alice#,#bob#").deny("#nobody#,#carol#"));
  return share_change("add_share", run, after, after);
}

Change modifying_a_share() {
  const Share photos_for_staff =
      stored_share("Photos", 1).comment("from & to").read("#@staff#").write("#carol#").deny("#nobody#");
  const Share record = Share{"Photos"}
                           .path("/mnt/HD/HD_b2/Photos")
                           .comment("from & to")
                           .read("#@staff#")
                           .write("#carol#")
                           .oplocks("yes")
                           .map_archive("no");
  const auto run = [record] { return mod_share(record); };
  const Shares after{music(), photos_for_staff, docs()};
  return share_change("mod_share", run, after, after);
}

Change deleting_a_share() {
  const Shares after{music(), photos()};
  return share_change(
      "del_share", [] { return del_share("Docs"); }, after, after);
}

// A share on each volume; everyone of the second becomes everyone but alice.
Change changing_an_account() {
  const Share music_after = stored_share("Music").write("#bob#,#alice#").deny("#nobody#");
  const Share photos_after = stored_share("Photos", 1).write("#bob#,#carol#");
  Change change = share_change("acnt_mod_share", [] { return acnt_mod_share("alice"); },
                               {music_after, Share{photos_after}.deny("#alice#"), docs()},
                               {music_after, Share{photos_after}.deny("#nobody#,#alice#"), docs()});
  change.prepare = [] {
    free_acnt_list();
    insert_acnt_node("Music", 2);
    insert_acnt_node("Photos", 3);
  };
  return change;
}

Change adding_a_share_in_domain_mode() {
  const Share record =
      Share{"Films"}.path("/mnt/HD/HD_b2/Films").write("#dora#").oplocks("yes").map_archive("no");
  const auto run = [record] { return add_share(record); };
  Shares after = domain_shares_before();
  after.push_back(stored_share("Films", 1).write("#dora#").deny("#nobody#"));
  return share_change("add_share in domain mode", run, after, after, domain_files, domain_shares_before());
}

Change adding_a_link() {
  Links links = links_before;
  links.push_back({"nas3", "films", "movies", "Media"});
  return {"add_dfs_node",
          [] {},
          [] { return static_cast<int>(add_dfs_node("nas3", "films", "movies", "Media")); },
          {{link_path, link_file(links)}},
          add_a_link_more,
          with_a_link_more()};
}

Change renaming_a_group() {
  Links links = links_before;
  links.front().group = "Leisure";
  // A change of either file, so that both names are free of what the interrupted one left.
  const auto next = [] { return add_dfs_group_node("Archive") == 1 ? add_a_link_more() : 0; };
  const auto after_next = [](const Files &now) {
    return with_a_link_more()(
        replacing_in(group_path, "  </dfs>\n", group_item("Archive") + "  </dfs>\n")(now));
  };
  return {"mod_dfs_group_node",
          [] {},
          [] { return static_cast<int>(mod_dfs_group_node("Media", "Leisure")); },
          {{group_path, group_file({"Leisure", "Work"})}, {link_path, link_file(links)}},
          next,
          after_next};
}

Change storing_a_value() {
  return {"xml_set_str",
          [] {},
          [] {
            xml_set_str("/system_mgr/samba/workgroup", "STUDIO");
            return 1;
          },
          {{config_database, replaced(configuration_before(0), "HOME", "STUDIO")}},
          [] {
            xml_set_str("/system_mgr/samba/netbios_name", "attic");
            return 1;
          },
          replacing_in(config_database, "cellar", "attic")};
}

} // namespace nasshare::tests

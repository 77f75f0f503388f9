// The list of installed add-on packages.
#include "appliance.h"
#include "nasshare/platform.h"
#include "output.h"
#include "xml.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace nasshare::tests {
namespace {

using Packages = std::vector<std::pair<std::string, std::string>>;

std::string package(const std::string &name, const std::string &path) {
  return element_around(1, "package", element_line(2, "name", name) + element_line(2, "path", path));
}

void write_packages(const std::string &packages) {
  Appliance{}.file("/etc/NAS_CFG/packages.xml", "<packages>\n" + packages + "</packages>\n");
}

Packages listed() {
  Packages packages;
  for (const modx_package *entry = p_lib_list->first; entry != nullptr; entry = entry->next) {
    packages.emplace_back(entry->name, entry->path);
  }
  EXPECT_EQ(p_lib_list->count, static_cast<std::int32_t>(packages.size()));
  return packages;
}

Packages read_anew() {
  MODX_COMMAND(1, 0);
  MODX_ReadAllXml();
  return listed();
}

class PackageList : public testing::Test {
protected:
  ~PackageList() override { MODX_FreeAllXml(); }
};

TEST_F(PackageList, IsEmptyButThereFromTheStart) {
  ASSERT_NE(p_lib_list, nullptr);
  EXPECT_EQ(listed(), Packages());
}

TEST_F(PackageList, HoldsThePackagesInTheirOrder) {
  write_packages(package("aMule", "/mnt/HD/HD_a2/Nas_Prog/aMule") + package("R&amp;B", "/mnt/HD/HD_b2/x"));
  EXPECT_EQ(read_anew(), (Packages{{"aMule", "/mnt/HD/HD_a2/Nas_Prog/aMule"}, {"R&B", "/mnt/HD/HD_b2/x"}}));
}

TEST_F(PackageList, ReadingAgainReplacesTheList) {
  write_packages(package("a", "/a") + package("b", "/b"));
  read_anew();
  write_packages(package("c", "/c"));
  EXPECT_EQ(read_anew(), (Packages{{"c", "/c"}}));
}

TEST_F(PackageList, FreeingEmptiesTheListAndCanBeRepeated) {
  write_packages(package("a", "/a"));
  read_anew();
  MODX_FreeAllXml();
  EXPECT_EQ(listed(), Packages());
  MODX_FreeAllXml();
  EXPECT_EQ(listed(), Packages());
  EXPECT_EQ(read_anew(), (Packages{{"a", "/a"}}));
}

TEST_F(PackageList, OnlyPackageElementsArePackages) {
  write_packages("<!-- none --><other><name>x</name><path>/x</path></other>" + package("a", "/a") + "text");
  EXPECT_EQ(read_anew(), (Packages{{"a", "/a"}}));
}

TEST_F(PackageList, ChildrenCountInAnyOrder) {
  write_packages("<package><version>1</version><path>/a</path><name>a</name></package>");
  EXPECT_EQ(read_anew(), (Packages{{"a", "/a"}}));
}

TEST_F(PackageList, APackageWithoutNameOrPathIsLeftOut) {
  write_packages("<package/><package><name>n</name></package><package><path>/p</path></package>" +
                 package("", "/p") + package("n", "") + package("a", "/a"));
  EXPECT_EQ(read_anew(), (Packages{{"a", "/a"}}));
}

TEST_F(PackageList, WhatJustFitsIsTakenWhole) {
  const std::string name(255, 'n');
  const std::string path = "/" + std::string(4094, 'p');
  write_packages(package(name, path));
  EXPECT_EQ(read_anew(), (Packages{{name, path}}));
}

TEST_F(PackageList, WhatDoesNotFitIsLeftOut) {
  write_packages(package(std::string(256, 'n'), "/p") + package("n", "/" + std::string(4095, 'p')) +
                 package(std::string(100000, 'n'), std::string(100000, 'p')) + package("a", "/a"));
  EXPECT_EQ(read_anew(), (Packages{{"a", "/a"}}));
}

TEST_F(PackageList, WithoutAFileItIsEmpty) {
  write_packages(package("a", "/a"));
  read_anew();
  Appliance{}.remove("/etc/NAS_CFG/packages.xml");
  EXPECT_EQ(read_anew(), Packages());
}

TEST_F(PackageList, ABrokenFileIsEmptyWithoutAWord) {
  for (const char *text :
       {"", "<packages>", "no XML", "<packages><package><name>\xff</name></package></packages>",
        "<config><package><name>a</name><path>/a</path></package></config>"}) {
    Appliance{}.file("/etc/NAS_CFG/packages.xml", text);
    Captured captured;
    EXPECT_EQ(read_anew(), Packages()) << text;
    EXPECT_EQ(captured.err(), "") << text;
  }
}

TEST_F(PackageList, ManyPackagesAreAllListed) {
  std::string packages;
  for (int i = 0; i < 3000; ++i) {
    packages += package("p" + std::to_string(i), "/mnt/HD/HD_a2/" + std::to_string(i));
  }
  write_packages(packages);
  EXPECT_EQ(read_anew().size(), 3000U);
}

} // namespace
} // namespace nasshare::tests

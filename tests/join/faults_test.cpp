// What cannot be joined, and what then happens: nothing, and a sentence that says why.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "findings/finding_list.h"
#include "join/joined_folder.h"
#include "support/folder_tree.h"
#include "support/small_disk.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// A product, and references to files as its components.
std::string file_that_refers_to(const std::vector<std::string>& names) {
  std::string text = product(2, "p", "()", "$") + "#1=C();\n";
  int number = 10;
  for (const std::string& name : names) {
    const std::string at = std::to_string(number);
    text += "#" + at + "=DOCUMENT_FILE('" + name + "','','',$,'',$);\n#" +
            std::to_string(number + 1) + "=APPLIED_DOCUMENT_REFERENCE(#" + at + ",'',(#2));\n";
    number += 2;
  }
  return text;
}

TEST(JoinFaults, AllMissingFilesAreNamed) {
  JoinedFolder folder;
  folder.file("root.stp", file_that_refers_to({"a.stp", "b.stp", "c.stp"}));
  folder.file("a.stp", file_that_refers_to({"d.stp", "b.stp"}));
  EXPECT_EQ(
      folder.refusal(),
      ": Files that are referred to are missing: \"b.stp\", \"c.stp\", \"d.stp\" (referred to "
      "by \"a.stp\"), \"b.stp\" (referred to by \"a.stp\").");
  EXPECT_EQ(names_in(folder.folder().path()), (std::set<std::string>{"a.stp", "root.stp"}));
}

TEST(JoinFaults, AFolderIsNoFile) {
  JoinedFolder folder;
  folder.file("root.stp", file_that_refers_to({"a.stp"}));
  fs::create_directory(folder.folder() / "a.stp");
  EXPECT_EQ(folder.refusal(), ": Files that are referred to are missing: \"a.stp\".");
}

TEST(JoinFaults, Circles) {
  JoinedFolder folder;
  folder.file("root.stp", file_that_refers_to({"a.stp"}));
  folder.file("a.stp", file_that_refers_to({"b.stp"}));
  folder.file("b.stp", file_that_refers_to({"a.stp"}));
  EXPECT_EQ(folder.refusal(), ": Files refer to each other in a circle: \"a.stp\", \"b.stp\".");
  folder.file("a.stp", file_that_refers_to({"./a.stp"}));
  EXPECT_EQ(folder.refusal(), ": The file \"a.stp\" refers to itself.");
}

TEST(JoinFaults, TheSameFileTwiceIsNoCircle) {
  JoinedFolder folder;
  folder.file("root.stp", file_that_refers_to({"a.stp", "b.stp"}));
  folder.file("a.stp", file_that_refers_to({"b.stp"}));
  folder.file("b.stp", file_that_refers_to({}));
  EXPECT_EQ(folder.refusal(), "joined");
}

TEST(JoinFaults, NamesThatLeadOutOfTheFolder) {
  JoinedFolder folder;
  fs::create_directories(folder.folder() / "in/below");
  fs::create_directory(folder.folder() / "inside");
  folder.file("a.stp", file_that_refers_to({}));
  folder.file("inside/b.stp", file_that_refers_to({}));
  folder.file("in/below/c.stp", file_that_refers_to({"../d.stp", "../../a.stp"}));
  folder.file("in/d.stp", file_that_refers_to({}));
  fs::create_symlink("../a.stp", folder.folder() / "in/link.stp");
  const std::string absolute = (folder.folder() / "a.stp").string();
  folder.file("in/root.stp", file_that_refers_to({"../a.stp", "below/c.stp", "../inside/b.stp",
                                                  "link.stp", absolute, "../missing.stp"}));
  const auto refusal = [&] {
    try {
      join(folder.folder() / "in/root.stp", folder.folder() / "out.stp", folder.options);
    } catch (const InputError& error) {
      return error.finding().sentence;
    }
    return std::string("joined");
  };
  EXPECT_EQ(refusal(),
            "References lead out of the folder of the file: \"../a.stp\", \"../inside/b.stp\", "
            "\"link.stp\", \"" +
                absolute +
                "\", \"../missing.stp\", \"../../a.stp\" (referred to by \"below/c.stp\").");
  folder.options.follow_outside = true;
  EXPECT_EQ(refusal(), "Files that are referred to are missing: \"../missing.stp\".");
  folder.file("missing.stp", file_that_refers_to({}));
  EXPECT_EQ(refusal(), "joined");
}

TEST(JoinFaults, ComponentThatCannotBeRead) {
  JoinedFolder folder;
  folder.file("root.stp", file_that_refers_to({"a.stp"}));
  folder.folder().write("a.stp", "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=A('");
  EXPECT_TRUE(folder.refusal().starts_with("a.stp: ")) << folder.refusal();
  EXPECT_EQ(names_in(folder.folder().path()), (std::set<std::string>{"a.stp", "root.stp"}));
}

TEST(JoinFaults, RootThatIsNotThereOrNoFile) {
  JoinedFolder folder;
  EXPECT_EQ(folder.refusal(), "root.stp: The file cannot be opened: No such file or directory.");
  fs::create_directory(folder.folder() / "root.stp");
  EXPECT_EQ(
      folder.refusal(),
      ": The folder holds no split: neither a list of one nor a \"roots.txt\" names a file in "
      "it.");
}

TEST(JoinFaults, FileWithoutAnyProduct) {
  JoinedFolder folder;
  folder.file("root.stp", file_that_refers_to({"a.stp"}));
  folder.file("a.stp", "#1=A();\n");
  EXPECT_EQ(folder.refusal(),
            "a.stp: The file holds no product, and another refers to it as a component's.");
  folder.file("a.stp", product(2, "x", "()", "$") + product(12, "y", "()", "$") + "#1=C();\n");
  EXPECT_EQ(folder.refusal(),
            "a.stp: The file holds several products at its top, and the reference to it names none "
            "of them.");
}

TEST(JoinFaults, MixedSchemas) {
  JoinedFolder folder;
  folder.file("root.stp", file_that_refers_to({"a.stp"}), "AP {1 0}");
  folder.file("a.stp", file_that_refers_to({}), "AP");
  EXPECT_EQ(folder.refusal(), "joined");
  folder.options.replace = true;
  folder.file("a.stp", file_that_refers_to({}), "OTHER");
  EXPECT_EQ(folder.refusal(), "a.stp: The file obeys the schema \"OTHER\", the root \"AP\".");
}

TEST(JoinFaults, OutputThatIsThere) {
  JoinedFolder folder;
  folder.file("root.stp", file_that_refers_to({}));
  folder.folder().write("out.stp", "precious");
  EXPECT_EQ(folder.refusal(), "out.stp: File exists");
  EXPECT_EQ(read_file("out.stp"), "precious");
  EXPECT_EQ(names_in(folder.folder().path()), (std::set<std::string>{"out.stp", "root.stp"}));
  folder.options.replace = true;
  EXPECT_EQ(folder.refusal(), "joined");
  EXPECT_TRUE(read_file("out.stp").starts_with("ISO-10303-21;"));
  EXPECT_EQ(names_in(folder.folder().path()), (std::set<std::string>{"out.stp", "root.stp"}));
}

TEST(JoinFaults, LinkInPlaceOfTheOutputIsNotFollowed) {
  JoinedFolder folder;
  folder.file("root.stp", file_that_refers_to({}));
  folder.folder().write("precious", "precious");
  fs::create_symlink("precious", folder.folder() / "out.stp");
  EXPECT_EQ(folder.refusal(), "out.stp: File exists");
  folder.options.replace = true;
  EXPECT_EQ(folder.refusal(), "joined");
  EXPECT_EQ(read_file("precious"), "precious");
  EXPECT_FALSE(fs::is_symlink(folder.folder() / "out.stp"));
}

TEST(JoinFaults, FailureLeavesWhatWasThere) {
  JoinedFolder folder;
  folder.options.replace = true;
  folder.folder().write("out.stp", "precious");
  folder.file("root.stp", file_that_refers_to({"a.stp"}));
  EXPECT_EQ(folder.refusal(), ": Files that are referred to are missing: \"a.stp\".");
  EXPECT_EQ(read_file("out.stp"), "precious");
}

TEST(JoinFaults, OutputThatIsAnInput) {
  JoinedFolder folder;
  folder.options.replace = true;
  const std::string part = whole_file(file_that_refers_to({}));
  folder.folder().write("out.stp", part);
  folder.file("root.stp", file_that_refers_to({"out.stp"}));
  EXPECT_EQ(folder.refusal(), "out.stp: File exists");
  EXPECT_EQ(read_file("out.stp"), part);
}

TEST(JoinFaults, OutputThatCannotBe) {
  JoinedFolder folder;
  folder.file("root.stp", file_that_refers_to({}));
  fs::create_directory(folder.folder() / "out.stp");
  folder.options.replace = true;
  EXPECT_EQ(folder.refusal(), "out.stp: Is a directory");
  EXPECT_THROW(join("root.stp", "nowhere/out.stp"), OutputError);
  EXPECT_EQ(names_in(folder.folder().path()), (std::set<std::string>{"out.stp", "root.stp"}));
}

TEST(JoinFaults, FullDisk) {
  JoinedFolder folder;
  std::string records = file_that_refers_to({});
  for (int i = 100; i < 3000; ++i) {
    records += "#" + std::to_string(i) + "=CARTESIAN_POINT('',(0.,0.,0.));\n";
  }
  folder.file("root.stp", records);
  const SmallDisk disk(folder.folder() / "disk", "size=64k");
  if (!disk.is_there()) GTEST_SKIP() << "only root may have a small disk";
  try {
    join("root.stp", "disk/out.stp");
    FAIL() << "joined";
  } catch (const OutputError& error) {
    EXPECT_EQ(error.reason(), std::errc::no_space_on_device);
    EXPECT_EQ(error.path(), "disk/out.stp");
  }
  EXPECT_EQ(names_in("disk"), std::set<std::string>());
}

TEST(JoinFaults, MemoryLimitGoesForAllFilesTogether) {
  JoinedFolder folder;
  std::string records = file_that_refers_to({"a.stp"});
  for (int i = 100; i < 3000; ++i) records += "#" + std::to_string(i) + "=A();\n";
  folder.file("root.stp", records);
  records.replace(records.find("a.stp"), 5, "b.pdf");
  folder.file("a.stp", records);
  folder.options.memory_limit = 1 << 20;
  EXPECT_EQ(folder.refusal(), "joined");
  fs::remove("out.stp");
  // Where there is not enough for one, there comes a limit that is enough for one and not for two.
  std::string refusal;
  for (folder.options.memory_limit = 10'000; refusal.find("a.stp: ") != 0;
       folder.options.memory_limit += 5'000) {
    refusal = folder.refusal();
    ASSERT_NE(refusal, "joined");
  }
  EXPECT_EQ(refusal,
            "a.stp: With those of the file read before it, the records of this file need more "
            "memory than the limit of " +
                with_commas(folder.options.memory_limit - 5'000) + " bytes.");
}

TEST(JoinFaults, ProgressTellsBothReadingsAndMayEndIt) {
  JoinedFolder folder;
  folder.file("root.stp", file_that_refers_to({"a.stp"}));
  folder.file("a.stp", file_that_refers_to({}));
  std::vector<Progress> told;
  folder.options.progress = [&](const Progress& progress) { told.push_back(progress); };
  EXPECT_EQ(folder.refusal(), "joined");
  const std::uint64_t both = fs::file_size("root.stp") + fs::file_size("a.stp");
  ASSERT_FALSE(told.empty());
  EXPECT_EQ(told.back().stage, Stage::writing);
  EXPECT_EQ(told.back().done, both);
  EXPECT_EQ(told.back().total, both);
  for (std::size_t i = 1; i < told.size(); ++i) {
    EXPECT_LE(told[i].done, told[i].total);
    if (told[i].stage == told[i - 1].stage) {
      EXPECT_LE(told[i - 1].done, told[i].done);
    }
  }
  folder.options.replace = true;
  folder.folder().write("out.stp", "precious");
  folder.options.progress = [&](const Progress& progress) {
    if (progress.stage == Stage::writing) throw 1;
  };
  EXPECT_THROW(join("root.stp", "out.stp", folder.options), int);
  EXPECT_EQ(read_file("out.stp"), "precious");
  EXPECT_EQ(names_in(folder.folder().path()),
            (std::set<std::string>{"a.stp", "out.stp", "root.stp"}));
}

TEST(JoinFaults, FileThatIsChangedMeanwhile) {
  JoinedFolder folder;
  folder.file("root.stp", file_that_refers_to({"a.stp"}));
  folder.file("a.stp", file_that_refers_to({}));
  folder.options.progress = [&](const Progress& progress) {
    if (progress.stage == Stage::writing)
      folder.file("a.stp", file_that_refers_to({}) + "#90=A();\n");
  };
  const std::string refusal = folder.refusal();
  EXPECT_TRUE(refusal.starts_with("a.stp: ")) << refusal;
  EXPECT_EQ(names_in(folder.folder().path()), (std::set<std::string>{"a.stp", "root.stp"}));
}

}  // namespace
}  // namespace Kessel::test

// What is in the folder of a split besides its files.
#include "support/folder_tree.h"
#include "verify/verified_split.h"

namespace Kessel::test {
namespace {

class Folder : public VerifiedSplit {};

TEST_F(Folder, WithoutRootListTheFileToWhichNoOtherRefersIsTheRoots) {
  std::filesystem::remove("out/roots.txt");
  write("frame.stp", whole_file(""));
  EXPECT_EQ(found(), FoundLines{"roots.txt:0: warning missing_root_list: There is no \"roots.txt\" "
                                "that holds the root file's name."});
}

TEST_F(Folder, RootListThatNamesNothing) {
  write("roots.txt", "../root.stp\n");
  EXPECT_EQ(found(), FoundLines{"roots.txt:0: error wrong_root_list: It does not hold the name of "
                                "an exchange file in the folder."});
}

TEST_F(Folder, RootListThatNamesAPart) {
  write("roots.txt", "part.stp\n");
  const FoundLines lines = found();
  EXPECT_TRUE(std::find(lines.begin(), lines.end(),
                        "root.stp:0: warning foreign_file: The file does not belong to the split: "
                        "no other refers to it.") != lines.end());
  EXPECT_GT(lines.size(), 1u);
}

TEST_F(Folder, ForeignFile) {
  write("more.STEP", whole_file("#1=A();\n"));
  write("notes.txt", "nothing");
  EXPECT_EQ(found(),
            FoundLines{"more.STEP:0: warning foreign_file: The file does not belong to the "
                       "split: no other refers to it."});
}

TEST_F(Folder, TwoThatCouldBeTheRoots) {
  std::filesystem::remove("out/roots.txt");
  write("more.stp", whole_file("#1=A();\n"));
  EXPECT_EQ(found(),
            (FoundLines{"roots.txt:0: warning missing_root_list: There is no \"roots.txt\" that "
                        "holds the root file's name.",
                        ".:0: error missing_file: No file is known to be the root's: there is "
                        "none, or more than one, to which no other refers."}));
}

TEST_F(Folder, NoFolderOrNothingInIt) {
  std::filesystem::remove_all("out");
  EXPECT_EQ(found(), FoundLines{".:0: error missing_file: The folder cannot be read: No such file "
                                "or directory."});
  std::filesystem::create_directory("out");
  EXPECT_EQ(found().back(), ".:0: error missing_file: There is no exchange file in the folder.");
}

TEST_F(Folder, NothingIsWritten) {
  const FolderTree before = tree_of(folder_.path());
  found();
  EXPECT_EQ(tree_of(folder_.path()), before);
}

}  // namespace
}  // namespace Kessel::test

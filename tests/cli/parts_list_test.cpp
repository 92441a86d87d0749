// velkstep tree --bom: parts with total quantities, in columns and as comma-separated values.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/run_process.h"
#include "inspection/products.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

std::string list_of(const std::string& records, std::vector<std::string> options = {}) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(records));
  options.insert(options.begin(), {"tree", "--bom", "in.stp"});
  const ProcessRun run = run_velkstep(options);
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, "");
  return run.out;
}

TEST(PartsList, ExampleInColumns) {
  const ProcessRun run = run_velkstep({"tree", "--bom", VELKSTEP_EXAMPLE});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(run.out,
            "Quantity  Name           Id             Kind  Number  File\n"
            "       5  Pivot pin      Pivot pin      part  #111    Pivot pin.stp\n"
            "       4  Rubber foot    Rubber foot    part  #189    Rubber foot.stp\n"
            "       1  Base           Base           part  #292    Base.stp\n"
            "       1  Column         Column         part  #370    Column.stp\n"
            "       2  Arm beam       Arm beam       part  #615    Arm beam.stp\n"
            "       1  Socket         Socket         part  #761    Socket.stp\n"
            "       1  Shade          Shade          part  #884    Shade.stp\n"
            "       1  Bulb           Bulb           part  #1037   Bulb.stp\n"
            "       1  Rocker switch  Rocker switch  part  #1307   Rocker switch.stp\n");
}

TEST(PartsList, ColumnsLineUpWhateverTheCharactersTake) {
  // Two columns each for the first, one each for the second, none for the mark on the third's "e".
  EXPECT_EQ(list_of(product(1, "'','root',''") + product(11, "'x','\\X2\\30CD30B8\\X0\\',''") +
                    product(21, "'y','\\X2\\00E4\\X0\\bc',''") + product(31, "'z','e\xCC\x81',''") +
                    usage(40, 3, 13) + usage(41, 3, 23) + usage(42, 3, 33)),
            "Quantity  Name  Id  Kind  Number  File\n"
            "       1  ネジ  x   part  #13     U30CDU30B8.stp\n"
            "       1  äbc   y   part  #23     abc.stp\n"
            "       1  e\xCC\x81     z   part  #33     e.stp\n");
}

TEST(PartsList, AssembliesAreListedWhereTheyHaveBodies) {
  EXPECT_EQ(
      list_of(product(1, "'a','a',''") + product(11, "'b','b',''") + product(21, "'c','c',''") +
              product(31, "'d','d',''") + usage(41, 3, 13) + usage(42, 3, 13) + usage(43, 13, 23) +
              usage(44, 13, 33) + usage(45, 33, 23) + shape(50, 13, true)),
      "Quantity  Name  Id  Kind                  Number  File\n"
      "       2  b     b   assembly with bodies  #13     b.stp\n"
      "       4  c     c   part                  #23     c.stp\n");
}

TEST(PartsList, TotalThatIsTooLargeSaysSo) {
  std::string records;
  for (int i = 0; i <= 64; ++i) records += product(10 * i + 1, "'p','p',''");
  for (int i = 0; i < 64; ++i) {
    records += usage(1000 + 2 * i, 10 * i + 3, 10 * i + 13);
    records += usage(1001 + 2 * i, 10 * i + 3, 10 * i + 13);
  }
  EXPECT_EQ(list_of(records),
            "              Quantity  Name  Id  Kind  Number  File\n"
            "≥ 18446744073709551615  p     p   part  #643    p (65).stp\n");
  EXPECT_EQ(list_of(records, {"--csv"}),
            "quantity,name,id,kind,number,file\r\n"
            "18446744073709551615,p,p,part,643,p (65).stp\r\n");
}

TEST(PartsList, ValuesHaveTheColumnsOfTheTable) {
  const std::string records = product(1, "'','root',''") + product(11, "'1,5','6\" pipe','plain'") +
                              product(21, "'y,1','',''") + usage(30, 3, 13) + usage(31, 3, 23) +
                              usage(32, 3, 23);
  EXPECT_EQ(list_of(records),
            "Quantity  Name     Id   Kind  Number  File\n"
            "       1  6\" pipe  1,5  part  #13     6_ pipe.stp\n"
            "       2  y,1      y,1  part  #23     y,1.stp\n");
  EXPECT_EQ(list_of(records, {"--csv"}),
            "quantity,name,id,kind,number,file\r\n"
            "1,\"6\"\" pipe\",\"1,5\",part,13,6_ pipe.stp\r\n"
            "2,\"y,1\",\"y,1\",part,23,\"y,1.stp\"\r\n");
}

TEST(PartsList, SortsAndMergesNothing) {
  // Two products of one name, one of which is used twice.
  const std::string records = product(1, "'','root',''") + product(11, "'3','bolt',''") +
                              product(21, "'2','Axle',''") + product(31, "'1','bolt',''") +
                              usage(40, 3, 13) + usage(41, 3, 23) + usage(42, 3, 33) +
                              usage(43, 3, 33);
  const std::string heading = "Quantity  Name  Id  Kind  Number  File\n";
  const std::string bolt = "       1  bolt  3   part  #13     bolt.stp\n";
  const std::string axle = "       1  Axle  2   part  #23     Axle.stp\n";
  const std::string bolts = "       2  bolt  1   part  #33     bolt (2).stp\n";
  EXPECT_EQ(list_of(records), heading + bolt + axle + bolts);
  EXPECT_EQ(list_of(records, {"--sort=file"}), heading + bolt + axle + bolts);
  EXPECT_EQ(list_of(records, {"--sort=name"}), heading + axle + bolt + bolts);
  EXPECT_EQ(list_of(records, {"--sort=quantity"}), heading + bolts + axle + bolt);
  EXPECT_EQ(list_of(records, {"--sort=quantity", "--csv"}),
            "quantity,name,id,kind,number,file\r\n"
            "2,bolt,1,part,33,bolt (2).stp\r\n"
            "1,Axle,2,part,23,Axle.stp\r\n"
            "1,bolt,3,part,13,bolt.stp\r\n");
}

TEST(PartsList, FileWithoutPartsHasTheHeadingsAlone) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(""));
  EXPECT_EQ(run_velkstep({"tree", "--bom", "in.stp"}).out,
            "Quantity  Name  Id  Kind  Number  File\n");
  EXPECT_EQ(run_velkstep({"tree", "--bom", "--csv", "in.stp"}).out,
            "quantity,name,id,kind,number,file\r\n");
}

TEST(PartsListSizes, StandBehindTheOtherColumns) {
  const ProcessRun text = run_velkstep({"tree", "--bom", "--sizes", VELKSTEP_EXAMPLE});
  EXPECT_EQ(text.exit_code, 0);
  EXPECT_NE(text.out.find("  X "), std::string::npos);
  EXPECT_NE(text.out.find("  240 "), std::string::npos);
  EXPECT_NE(text.out.find("  millimetre\n"), std::string::npos);
  const ProcessRun csv = run_velkstep({"tree", "--bom", "--csv", "--sizes", VELKSTEP_EXAMPLE});
  EXPECT_TRUE(csv.out.starts_with("quantity,name,id,kind,number,file,x,y,z,unit\r\n"));
  EXPECT_NE(csv.out.find(",240,12,20,millimetre\r\n"), std::string::npos);
  EXPECT_NE(csv.out.find("Pivot pin.stp,20,20,12,millimetre\r\n"), std::string::npos);
  EXPECT_EQ(run_velkstep({"tree", "--sizes", VELKSTEP_EXAMPLE}).exit_code, 2);
}

}  // namespace
}  // namespace Kessel::test

// The same job on an open CAD kernel, the way people script it: read the assembly into a document,
// write the document with one file per part.
//
//     peer_split IN OUTDIR
#include <IFSelect_ReturnStatus.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <STEPControl_StepModelType.hxx>
#include <Standard_Failure.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFApp_Application.hxx>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

namespace {

/// Returns whether the assembly was read and written.
bool split(const char* in, const std::filesystem::path& folder) {
  const Handle(XCAFApp_Application) application = XCAFApp_Application::GetApplication();
  Handle(TDocStd_Document) document;
  application->NewDocument("MDTV-XCAF", document);

  STEPCAFControl_Reader reader;
  if (reader.ReadFile(in) != IFSelect_RetDone || !reader.Transfer(document)) return false;

  std::filesystem::create_directories(folder);
  const std::string root = std::filesystem::absolute(folder) / "root.stp";
  STEPCAFControl_Writer writer;
  // The prefix makes it one file per part. They come to stand beside the root's file.
  return writer.Transfer(document, STEPControl_AsIs, "part_") &&
         writer.Write(root.c_str()) == IFSelect_RetDone;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: peer_split IN OUTDIR\n", stderr);
    return 2;
  }
  try {
    if (split(argv[1], argv[2])) return 0;
    std::fputs("peer_split: cannot read or write\n", stderr);
  } catch (const Standard_Failure& failure) {
    std::fprintf(stderr, "peer_split: %s\n", failure.GetMessageString());
  } catch (const std::exception& error) {
    std::fprintf(stderr, "peer_split: %s\n", error.what());
  }
  return 1;
}

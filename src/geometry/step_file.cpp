#include "geometry/step_file.h"

#include <APIHeaderSection_MakeHeader.hxx>
#include <Interface_Static.hxx>
#include <STEPCAFControl_ExternFile.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <StepData_Protocol.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_StepWriter.hxx>
#include <TCollection_HAsciiString.hxx>
#include <filesystem>
#include <fstream>

#include "base/text.h"
#include "geometry/step_text.h"

namespace quintara {
namespace {

// The kernel looks for the other files of an assembly beside an absolute path only.
std::string Absolute(const std::string& path) {
  return FromPath(std::filesystem::absolute(ToPath(path)));
}

void ReadOnlyWhatCounts(STEPCAFControl_Reader& reader) {
  reader.SetColorMode(Standard_True);
  reader.SetNameMode(Standard_True);
  reader.SetLayerMode(Standard_False);
  reader.SetPropsMode(Standard_False);
  reader.SetSHUOMode(Standard_False);
  reader.SetGDTMode(Standard_False);
  reader.SetMatMode(Standard_False);
  reader.SetViewMode(Standard_False);
}

void CheckExternalFiles(const STEPCAFControl_Reader& reader, const std::string& path) {
  using Files = NCollection_DataMap<TCollection_AsciiString, Handle(STEPCAFControl_ExternFile)>;
  const auto folder = ToPath(path).parent_path();
  for (Files::Iterator file(reader.ExternFiles()); file.More(); file.Next()) {
    const std::string name = file.Key().ToCString();
    const bool loaded = file.Value()->GetLoadStatus() == IFSelect_RetDone && file.Value()->GetTransferStatus();
    const auto place = folder / ToPath(name);
    try {
      if (!loaded || std::filesystem::exists(place)) CheckStepFile(FromPath(place));
    } catch (const Failure& error) {
      throw Failure(error.Number(), path + ": a file that it refers to could not be read: " + error.Description());
    }
    if (!loaded)
      throw Failure(failure::kInvalidFormat, path + ": the file that it refers to, " + name + ", is damaged");
  }
}

Handle(TCollection_HAsciiString) HeaderText(const std::string& text) {
  return new TCollection_HAsciiString(text.c_str());
}

void FixHeader(STEPCAFControl_Writer& writer, const std::string& name) {
  APIHeaderSection_MakeHeader header(writer.ChangeWriter().Model());
  header.SetName(HeaderText(name));
  header.SetTimeStamp(HeaderText("2000-01-01T00:00:00"));
  header.SetAuthorValue(1, HeaderText(""));
  header.SetOrganizationValue(1, HeaderText(""));
  header.SetPreprocessorVersion(HeaderText("Open CASCADE Technology"));
  header.SetOriginatingSystem(HeaderText("Quintara"));
  header.SetAuthorisation(HeaderText(""));
  header.SetDescriptionValue(1, HeaderText(""));
}

// Up to a hundred metres with all digits; the kernel's own way of saving rounds from one metre on.
void SaveModel(const Handle(StepData_StepModel) & model, const std::string& path) {
  StepData_StepWriter text(model);
  text.FloatWriter().SetFormatForRange("%.12f", 0.1, 1e5);
  text.SendModel(Handle(StepData_Protocol)::DownCast(model->Protocol()));
  std::ofstream stream(ToPath(path), std::ios::binary);
  const bool printed = text.Print(stream);
  stream.close();
  if (!printed || !stream) throw Failure(failure::kPathAccess, path + ": could not be written");
  CheckStepFile(path);
}

}  // namespace

void ReadStep(const std::string& path, const Document& document, const Progress& progress) {
  const auto encoding = CheckStepFile(path);
  Translated(path, "could not be read", [&] {
    const auto absolute = Absolute(path);
    STEPCAFControl_Reader reader;
    ReadOnlyWhatCounts(reader);
    Interface_Static::SetCVal("read.step.codepage", encoding == StepEncoding::kUtf8 ? "UTF8" : "CP1252");
    if (progress) progress(0, "Reading the file");
    if (reader.ReadFile(absolute.c_str()) != IFSelect_RetDone) {
      throw Failure(failure::kInvalidFormat, path + ": is damaged: its data could not be read");
    }
    auto target = document.Get();
    KernelProgress transfer(progress, 0.4, 1.0, "Building the geometry");
    const bool done = reader.Transfer(target, transfer.Range());
    CheckExternalFiles(reader, absolute);
    if (!done) throw Failure(failure::kInvalidFormat, path + ": holds no part and no assembly");
  });
}

void WriteStepFile(const TDF_Label& label, const std::string& name, EdgeCurves curves, const std::string& path,
                   const Progress& progress) {
  Translated(path, "could not be written", [&] {
    STEPCAFControl_Writer writer;
    writer.SetNameMode(Standard_True);
    writer.SetColorMode(Standard_True);
    // Materials that some assemblies carry stop the writer.
    writer.SetMaterialMode(Standard_False);
    Interface_Static::SetCVal("write.step.schema", "AP214IS");
    Interface_Static::SetIVal("write.surfacecurve.mode", curves == EdgeCurves::kOnFaces ? 1 : 0);
    KernelProgress transfer(progress, 0.0, 0.8, "Translating into STEP");
    if (!writer.Transfer(label, STEPControl_AsIs, nullptr, transfer.Range())) {
      throw Failure(failure::kInvalidFormat, path + ": the geometry of " + name + " could not be written as STEP");
    }
    FixHeader(writer, name);
    SaveModel(writer.ChangeWriter().Model(), path);
  });
}

}  // namespace quintara

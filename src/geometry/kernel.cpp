#include "geometry/kernel.h"

#include <BinXCAFDrivers.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_ProgressIndicator.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <fstream>

#include "base/text.h"

namespace quintara {
namespace {

Handle(XCAFApp_Application) Application() {
  static const auto application = [] {
    auto made = XCAFApp_Application::GetApplication();
    BinXCAFDrivers::DefineFormat(made);
    Message::DefaultMessenger()->ChangePrinters().Clear();
    // Names come from files alone: an invented one hides that a component has none.
    XCAFDoc_ShapeTool::SetAutoNaming(Standard_False);
    return made;
  }();
  return application;
}

std::vector<TDF_Label> Listed(const TDF_LabelSequence& labels) {
  return {labels.begin(), labels.end()};
}

class Teller : public Message_ProgressIndicator {
 public:
  Teller(const Progress& progress, double from, double to, const std::string& what)
      : progress_(progress), from_(from), to_(to), what_(what) {}

 protected:
  void Show(const Message_ProgressScope&, const Standard_Boolean) override {
    constexpr double kStep = 0.01;
    const double fraction = from_ + (to_ - from_) * GetPosition();
    if (!progress_ || fraction < told_ + kStep) return;
    told_ = fraction;
    progress_(fraction, what_);
  }

 private:
  Progress progress_;
  double from_;
  double to_;
  std::string what_;
  double told_ = -1;
};

}  // namespace

TCollection_ExtendedString ToKernelText(const std::string& utf8) {
  return {utf8.c_str(), Standard_True};
}

std::string FromKernelText(const TCollection_ExtendedString& text) {
  std::string utf8(static_cast<std::size_t>(text.LengthOfCString()) + 1, '\0');
  auto* bytes = utf8.data();
  utf8.resize(static_cast<std::size_t>(text.ToUTF8CString(bytes)));
  return utf8;
}

std::string NameOf(const TDF_Label& label) {
  Handle(TDataStd_Name) name;
  return label.FindAttribute(TDataStd_Name::GetID(), name) ? FromKernelText(name->Get()) : std::string();
}

void SetName(const TDF_Label& label, const std::string& name) {
  TDataStd_Name::Set(label, ToKernelText(name));
}

PositionMatrix ToPosition(const gp_Trsf& transformation) {
  PositionMatrix position{};
  for (std::size_t column = 0; column < 4; ++column) {
    for (std::size_t row = 0; row < 3; ++row) {
      position[3 * column + row] = transformation.Value(static_cast<int>(row) + 1, static_cast<int>(column) + 1);
    }
  }
  return position;
}

gp_Trsf ToMovement(const PositionMatrix& m) {
  gp_Trsf movement;
  movement.SetValues(m[0], m[3], m[6], m[9], m[1], m[4], m[7], m[10], m[2], m[5], m[8], m[11]);
  // Axes that aren't quite of length one leave a scale, which no writer takes.
  movement.SetScaleFactor(1.0);
  return movement;
}

Document::Document() {
  Application()->NewDocument("BinXCAF", document_);
}

Document::Document(const std::string& path, const std::string& name) {
  std::ifstream stream(ToPath(path), std::ios::binary);
  if (Application()->Open(stream, document_) != PCDM_RS_OK) {
    throw Failure(failure::kInternal, name + ": what was read of it could not be taken over");
  }
}

Document::~Document() {
  if (!document_.IsNull()) Application()->Close(document_);
}

void Document::Save(const std::string& path) const {
  std::ofstream stream(ToPath(path), std::ios::binary);
  const auto status = Application()->SaveAs(document_, stream);
  stream.close();
  if (status != PCDM_SS_OK || !stream) throw Failure(failure::kDiskFull, "The folder of temporary files is full");
}

std::vector<TDF_Label> Document::FreeShapes() const {
  TDF_LabelSequence labels;
  XCAFDoc_DocumentTool::ShapeTool(document_->Main())->GetFreeShapes(labels);
  return Listed(labels);
}

std::vector<TDF_Label> Document::Shapes() const {
  TDF_LabelSequence labels;
  XCAFDoc_DocumentTool::ShapeTool(document_->Main())->GetShapes(labels);
  return Listed(labels);
}

KernelProgress::KernelProgress(const Progress& progress, double from, double to, const std::string& what)
    : indicator_(new Teller(progress, from, to, what)) {}

Message_ProgressRange KernelProgress::Range() {
  return indicator_->Start();
}

}  // namespace quintara

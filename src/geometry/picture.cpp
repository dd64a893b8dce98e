#include "geometry/picture.h"

#include <AIS_InteractiveContext.hxx>
#include <AIS_TextLabel.hxx>
#include <Aspect_DisplayConnection.hxx>
#include <Font_NameOfFont.hxx>
#include <Image_AlienPixMap.hxx>
#include <OpenGl_GraphicDriver.hxx>
#include <Prs3d_LineAspect.hxx>
#include <V3d_AmbientLight.hxx>
#include <V3d_DirectionalLight.hxx>
#include <V3d_View.hxx>
#include <V3d_Viewer.hxx>
#include <XCAFPrs_AISObject.hxx>
#include <XCAFPrs_Style.hxx>
#include <Xw_Window.hxx>
#include <algorithm>
#include <cstring>

#include "base/text.h"
#include "geometry/saving.h"
#include "geometry/scene_model.h"
#include "geometry/virtual_screen.h"
#include "geometry/worker.h"

namespace quintara {
namespace {

constexpr unsigned kDrawingSeconds = 1800;
const Quantity_Color kPaper(0.97, 0.975, 0.985, Quantity_TOC_sRGB);
const Quantity_Color kInk(0.13, 0.15, 0.18, Quantity_TOC_sRGB);
const Quantity_Color kBareMetal(0.66, 0.70, 0.75, Quantity_TOC_sRGB);

// A scene whose parts without a colour of their own look like bare metal.
class SceneObject : public XCAFPrs_AISObject {
 public:
  using XCAFPrs_AISObject::XCAFPrs_AISObject;

 protected:
  void DefaultStyle(XCAFPrs_Style& style) const override {
    style.SetColorSurf(kBareMetal);
    style.SetColorCurv(kInk);
  }
};

// One off-screen drawing board.
class Board {
 public:
  explicit Board(const Handle(OpenGl_GraphicDriver) & driver, int width, int height)
      : viewer_(new V3d_Viewer(driver)), context_(new AIS_InteractiveContext(viewer_)), width_(width), height_(height) {
    Light();
    view_ = viewer_->CreateView();
    const Handle(Xw_Window) window = new Xw_Window(driver->GetDisplayConnection(), "Quintara", 0, 0, width, height);
    window->SetVirtual(Standard_True);
    view_->SetWindow(window);
    view_->SetBackgroundColor(kPaper);
    view_->ChangeRenderingParams().NbMsaaSamples = 4;
  }

  void Show(const TDF_Label& scene) {
    const Handle(SceneObject) object = new SceneObject(scene);
    object->Attributes()->SetFaceBoundaryDraw(Standard_True);
    object->Attributes()->SetFaceBoundaryAspect(new Prs3d_LineAspect(kInk, Aspect_TOL_SOLID, 1.0));
    context_->Display(object, AIS_Shaded, -1, Standard_False);
    view_->SetProj(V3d_XposYnegZpos);
    view_->FitAll(0.05, Standard_False);
    view_->ZFitAll();
  }

  void Write(const std::string& caption, double letterHeight) {
    const Handle(AIS_TextLabel) text = new AIS_TextLabel();
    text->SetText(ToKernelText(caption));
    text->SetColor(kInk);
    text->SetFont(Font_NOF_SANS_SERIF);
    text->SetFontAspect(Font_FA_Regular);
    text->SetHeight(letterHeight);
    text->SetHJustification(Graphic3d_HTA_CENTER);
    text->SetVJustification(Graphic3d_VTA_CENTER);
    text->SetTransformPersistence(new Graphic3d_TransformPers(Graphic3d_TMF_2d, Aspect_TOTP_CENTER));
    text->SetZLayer(Graphic3d_ZLayerId_TopOSD);
    context_->Display(text, 0, -1, Standard_False);
  }

  void CopyTo(Image_PixMap& picture, int left, int top) {
    // Of the picture's own kind, and so with its order of colours.
    Image_AlienPixMap drawn;
    V3d_ImageDumpOptions options;
    options.Width = width_;
    options.Height = height_;
    if (!view_->ToPixMap(drawn, options)) throw Failure(failure::kInternal, "The picture could not be drawn");
    const auto bytes = static_cast<std::size_t>(width_) * 3;
    const auto before = static_cast<std::size_t>(left) * 3;
    const auto firstRow = static_cast<std::size_t>(top);
    for (std::size_t row = 0; row < static_cast<std::size_t>(height_); ++row) {
      std::memcpy(picture.ChangeRow(firstRow + row) + before, drawn.Row(row), bytes);
    }
  }

 private:
  // Light from above and a little to the left, so that the three sides that are seen differ.
  void Light() {
    const Handle(V3d_AmbientLight) around = new V3d_AmbientLight(Quantity_NOC_WHITE);
    around->SetIntensity(0.9F);
    const Handle(V3d_DirectionalLight) lamp = new V3d_DirectionalLight(gp_Dir(-0.35, 0.65, -1.0), Quantity_NOC_WHITE);
    lamp->SetIntensity(1.5F);
    viewer_->SetLightOn(around);
    viewer_->SetLightOn(lamp);
  }

  Handle(V3d_Viewer) viewer_;
  Handle(AIS_InteractiveContext) context_;
  Handle(V3d_View) view_;
  int width_;
  int height_;
};

// Letters become smaller before a long caption is cut.
struct Caption {
  Caption(const std::string& given, int width, int height) : text(given), letterHeight(0.5 * height) {
    constexpr double kLetterWidth = 0.55;
    constexpr double kSmallest = 10;
    const auto fitting = [&] { return 0.95 * width / (kLetterWidth * letterHeight); };
    const auto letters = static_cast<double>(ToCodePage1252(given).size());
    if (letters > fitting()) letterHeight = std::max(kSmallest, letterHeight * fitting() / letters);
    if (letters > fitting()) Cut(static_cast<std::size_t>(fitting()));
  }

  void Cut(std::size_t letters) {
    while (ToCodePage1252(text).size() + 1 > std::max<std::size_t>(letters, 2)) {
      do text.pop_back();
      while (!IsUtf8(text));
    }
    text += "…";
  }

  std::string text;
  double letterHeight;
};

void DrawViews(const std::vector<PictureView>& views, const std::string& path, int width, int height,
               const Progress& progress) {
  const VirtualScreen screen;
  const Handle(Aspect_DisplayConnection) connection = new Aspect_DisplayConnection(screen.Name().c_str());
  const Handle(OpenGl_GraphicDriver) driver = new OpenGl_GraphicDriver(connection, Standard_False);
  Image_AlienPixMap picture;
  picture.InitZero(Image_Format_RGB, static_cast<std::size_t>(width), static_cast<std::size_t>(height));
  const int captionHeight = std::clamp(height / 12, 20, 48);
  const auto count = static_cast<int>(views.size());
  for (int i = 0; i < count; ++i) {
    const auto& view = views[static_cast<std::size_t>(i)];
    const int left = width * i / count;
    const int cell = width * (i + 1) / count - left;
    const Document document;
    SceneModel model(document, Detail::kMesh, progress);
    const auto root = model.Add(view.scene);
    model.Finish();
    Board board(driver, cell, height - captionHeight);
    if (!root.IsNull()) board.Show(root);
    board.CopyTo(picture, left, 0);
    Board strip(driver, cell, captionHeight);
    const Caption caption(view.caption, cell, captionHeight);
    strip.Write(caption.text, caption.letterHeight);
    strip.CopyTo(picture, left, height - captionHeight);
  }
  if (!picture.Save(path.c_str())) throw Failure(failure::kPathAccess, path + ": could not be written");
}

}  // namespace

void DrawPicture(const std::vector<PictureView>& views, const std::string& path, int width, int height) {
  constexpr int kSmallest = 64;
  constexpr int kLargest = 8192;
  const bool sizeFits = std::min(width, height) >= kSmallest && std::max(width, height) <= kLargest;
  if (views.empty() || !sizeFits) {
    throw Failure(failure::kInvalidCall, path + ": a picture has at least one view and 64 to 8192 pixels each way");
  }
  SaveBeside(path, [&](const std::string& newPath) {
    const auto body = [&](const Progress& progress) {
      Translated(path, "could not be drawn", [&] { DrawViews(views, newPath, width, height, progress); });
      return std::string();
    };
    RunInWorker({path, "could not be drawn", "drawer", kDrawingSeconds}, body, {});
  });
}

}  // namespace quintara

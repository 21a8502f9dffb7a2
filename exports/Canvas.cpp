#include "exports/Canvas.h"

#include <utility>

#include <cairo-pdf.h>
#include <pango/pangocairo.h>

#include "platform/value/Error.h"

namespace exports {
namespace {

constexpr double kPointsAMillimetre = 72 / 25.4;
constexpr double kMargin = 36;
constexpr double kFontSize = 8;
constexpr double kNameSize = 13;
constexpr double kRuleWidth = 0.4;
constexpr Colour kRule{0.75, 0.78, 0.82};
constexpr const char* kFont = "Noto Sans CJK SC";

struct Free {
  void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};

PangoAlignment AlignmentOf(Place place) {
  switch (place) {
    case Place::kCentre:
      return PANGO_ALIGN_CENTER;
    case Place::kRight:
      return PANGO_ALIGN_RIGHT;
    case Place::kLeft:
      break;
  }
  return PANGO_ALIGN_LEFT;
}

}  // namespace

void Canvas::Unref::operator()(_cairo_surface* surface) const { cairo_surface_destroy(surface); }
void Canvas::Unref::operator()(_cairo* context) const { cairo_destroy(context); }
void Canvas::Unref::operator()(_PangoLayout* layout) const { g_object_unref(layout); }

Canvas::Canvas(std::filesystem::path file, const std::string& title, const Paper& paper)
    : file_(std::move(file)),
      width_(paper.width * kPointsAMillimetre),
      height_(paper.height * kPointsAMillimetre),
      surface_(cairo_pdf_surface_create(file_.string().c_str(), width_, height_)),
      context_(cairo_create(surface_.get())),
      plain_(MakeLayout(kFontSize, false)),
      bold_(MakeLayout(kFontSize, true)),
      name_(MakeLayout(kNameSize, true)) {
  RequireSound();
  cairo_pdf_surface_set_metadata(surface_.get(), CAIRO_PDF_METADATA_TITLE, title.c_str());
}

void Canvas::RequireSound() const {
  const cairo_status_t status = cairo_surface_status(surface_.get());
  if (status == CAIRO_STATUS_SUCCESS) return;
  throw platform::Error(platform::ErrorNumber::kBadArgument, "exports",
                        "cannot write " + file_.string() + " (" + cairo_status_to_string(status) +
                            "); name a file in a folder that you may write to");
}

Canvas::Layout Canvas::MakeLayout(double size, bool bold) const {
  Layout layout(pango_cairo_create_layout(context_.get()));
  const std::unique_ptr<PangoFontDescription, Free> font(pango_font_description_new());
  pango_font_description_set_family(font.get(), kFont);
  pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
  pango_font_description_set_weight(font.get(), bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  pango_layout_set_font_description(layout.get(), font.get());
  pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
  pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
  return layout;
}

_PangoLayout* Canvas::LayoutOf(Font font) const {
  switch (font) {
    case Font::kBold:
      return bold_.get();
    case Font::kName:
      return name_.get();
    case Font::kPlain:
      break;
  }
  return plain_.get();
}

void Canvas::TurnToLying() {
  std::swap(width_, height_);
  cairo_pdf_surface_set_size(surface_.get(), width_, height_);
}

double Canvas::Width() const { return (width_ - 2 * kMargin) / scale_; }
double Canvas::Height() const { return (height_ - 2 * kMargin) / scale_; }

void Canvas::BeginPage() const {
  cairo_identity_matrix(context_.get());
  cairo_translate(context_.get(), kMargin, kMargin);
  cairo_scale(context_.get(), scale_, scale_);
}

void Canvas::EndPage() const { cairo_show_page(context_.get()); }

void Canvas::Finish() const {
  cairo_surface_finish(surface_.get());
  RequireSound();
}

void Canvas::Fill(Box box, double top, double height, const Colour& colour) const {
  cairo_set_source_rgb(context_.get(), colour.red, colour.green, colour.blue);
  cairo_rectangle(context_.get(), box.left, top, box.width, height);
  cairo_fill(context_.get());
}

void Canvas::Rule(double top, Box box) const { DrawLine({box.left, top}, {box.left + box.width, top}); }

void Canvas::Upright(double left, double top, double bottom) const { DrawLine({left, top}, {left, bottom}); }

void Canvas::DrawLine(const Point& from, const Point& to) const {
  cairo_set_source_rgb(context_.get(), kRule.red, kRule.green, kRule.blue);
  cairo_set_line_width(context_.get(), kRuleWidth);
  cairo_move_to(context_.get(), from.left, from.top);
  cairo_line_to(context_.get(), to.left, to.top);
  cairo_stroke(context_.get());
}

void Canvas::Text(Font font, const std::string& text, Box box, double top, Place place,
                  const Colour& colour) const {
  if (text.empty()) return;
  PangoLayout* layout = LayoutOf(font);
  pango_layout_set_width(layout, static_cast<int>((box.width - 2 * kPadding) * PANGO_SCALE));
  pango_layout_set_alignment(layout, AlignmentOf(place));
  pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
  cairo_set_source_rgb(context_.get(), colour.red, colour.green, colour.blue);
  cairo_move_to(context_.get(), box.left + kPadding, top + 0.5);
  pango_cairo_show_layout(context_.get(), layout);
}

double Canvas::WidthOf(Font font, const std::string& text) const {
  if (text.empty()) return 0;
  PangoLayout* layout = LayoutOf(font);
  pango_layout_set_width(layout, -1);
  pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
  int width = 0;
  pango_layout_get_size(layout, &width, nullptr);
  return static_cast<double>(width) / PANGO_SCALE;
}

Measures Canvas::MeasuresOf(Font font) const {
  Measures measures;
  for (unsigned char c = ' '; c < 0x7FU; ++c) {
    // Several, as a single one may be rounded.
    constexpr int kTimes = 10;
    measures.plain[c] = WidthOf(font, std::string(kTimes, static_cast<char>(c))) / kTimes;
  }
  measures.wide = WidthOf(font, "库");
  return measures;
}

}  // namespace exports

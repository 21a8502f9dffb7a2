#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "exports/Measures.h"
#include "exports/Paper.h"

struct _cairo;
struct _cairo_surface;
struct _PangoLayout;

namespace exports {

enum class Font { kPlain, kBold, kName };
enum class Place { kLeft, kCentre, kRight };

struct Colour {
  double red;
  double green;
  double blue;
};
inline constexpr Colour kInk{0.13, 0.15, 0.18};

// A stretch of a line.
struct Box {
  double left;
  double width;
};

// Sheets of paper that are drawn one after the other into a file; each leaves memory as the next begins.
// Points, from the upper left corner of what the margins leave.
class Canvas {
 public:
  // Upright. Raises kBadArgument for a file that cannot be written.
  Canvas(std::filesystem::path file, const std::string& title, const Paper& paper);

  void TurnToLying();
  // From the next page on everything is so much larger or smaller, the paper stays.
  void SetScale(double scale) { scale_ = scale; }
  // Of what the margins leave, in scaled points.
  double Width() const;
  double Height() const;

  void BeginPage() const;
  void EndPage() const;
  // Raises kBadArgument when not everything could be written.
  void Finish() const;

  void Fill(Box box, double top, double height, const Colour& colour) const;
  void Rule(double top, Box box) const;
  void Upright(double left, double top, double bottom) const;
  // In one line, cut with a mark when it does not fit.
  void Text(Font font, const std::string& text, Box box, double top, Place place,
            const Colour& colour = kInk) const;
  double WidthOf(Font font, const std::string& text) const;
  Measures MeasuresOf(Font font) const;

 private:
  struct Unref {
    void operator()(_cairo_surface* surface) const;
    void operator()(_cairo* context) const;
    void operator()(_PangoLayout* layout) const;
  };
  using Layout = std::unique_ptr<_PangoLayout, Unref>;

  struct Point {
    double left;
    double top;
  };

  void RequireSound() const;
  void DrawLine(const Point& from, const Point& to) const;
  Layout MakeLayout(double size, bool bold) const;
  _PangoLayout* LayoutOf(Font font) const;

  std::filesystem::path file_;
  double width_;
  double height_;
  double scale_ = 1;
  std::unique_ptr<_cairo_surface, Unref> surface_;
  std::unique_ptr<_cairo, Unref> context_;
  Layout plain_;
  Layout bold_;
  Layout name_;
};

inline constexpr double kPadding = 3;  // at both ends of a box

}  // namespace exports

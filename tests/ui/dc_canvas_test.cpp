#include "netgraph/ui/dc_canvas.h"

#include <gtest/gtest.h>
#include <memory>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/image.h>

#include "netgraph/text_metrics.h"

namespace tarn {
namespace {

constexpr Colour kWhite = {255, 255, 255};
constexpr Colour kBlack = {0, 0, 0};
constexpr Colour kRed = {255, 0, 0};
constexpr Colour kBlue = {0, 0, 255};
constexpr int kWidth = 200;
constexpr int kHeight = 100;

// A canvas on a white bitmap, and what is on it afterwards.
class DcCanvasTest : public testing::Test {
 protected:
  explicit DcCanvasTest(double dots = 1) {
    m_bitmap.CreateScaled(kWidth, kHeight, 24, dots);
    m_dc.SelectObject(m_bitmap);
    m_context.reset(wxGraphicsContext::Create(m_dc));
    m_canvas = std::make_unique<DcCanvas>(*m_context, Size{kWidth, kHeight}, dots);
    m_canvas->DrawRect(Role::kPage, {0, 0, kWidth, kHeight}, kWhite, std::nullopt);
  }

  const wxImage& Image() {
    if (!m_image.IsOk()) {
      m_context.reset();
      m_dc.SelectObject(wxNullBitmap);
      m_image = m_bitmap.ConvertToImage();
    }
    return m_image;
  }
  Colour At(int x, int y) {
    return {Image().GetRed(x, y), Image().GetGreen(x, y), Image().GetBlue(x, y)};
  }
  // What is not white.
  wxRect Painted() {
    wxRect painted;
    for (int y = 0; y < Image().GetHeight(); ++y) {
      for (int x = 0; x < Image().GetWidth(); ++x) {
        if (At(x, y) != kWhite) painted.Union(wxRect(x, y, 1, 1));
      }
    }
    return painted;
  }

  wxBitmap m_bitmap;
  wxMemoryDC m_dc;
  std::unique_ptr<wxGraphicsContext> m_context;
  std::unique_ptr<DcCanvas> m_canvas;
  wxImage m_image;
};

class DcCanvasOnFineDots : public DcCanvasTest {
 protected:
  DcCanvasOnFineDots() : DcCanvasTest(2) {}
};

TEST_F(DcCanvasTest, PaintsRectangles) {
  m_canvas->DrawRect(Role::kPlotArea, {10, 20, 30, 40}, kRed, std::nullopt);
  EXPECT_EQ(Painted(), wxRect(10, 20, 30, 40));
  EXPECT_EQ(At(25, 40), kRed);
}

TEST_F(DcCanvasTest, PaintsTheBorderOfARectangle) {
  m_canvas->DrawRect(Role::kLegend, {10, 20, 30, 40}, kRed, Pen{kBlue, 2});
  EXPECT_EQ(Painted(), wxRect(9, 19, 32, 42));
  EXPECT_EQ(At(9, 40), kBlue);
  EXPECT_EQ(At(25, 40), kRed);
}

TEST_F(DcCanvasTest, PutsStraightLinesOnWholeDots) {
  m_canvas->DrawLine(Role::kTick, {10.3, 5}, {10.3, 25}, {kBlack, 0.7});
  m_canvas->DrawLine(Role::kTick, {20, 50.2}, {60, 50.2}, {kBlack, 1});
  m_canvas->DrawLine(Role::kTick, {20, 70.4}, {60, 70.4}, {kBlack, 2});
  EXPECT_EQ(At(9, 15), kWhite);
  EXPECT_EQ(At(10, 15), kBlack);
  EXPECT_EQ(At(11, 15), kWhite);
  EXPECT_EQ(At(40, 49), kWhite);
  EXPECT_EQ(At(40, 50), kBlack);
  EXPECT_EQ(At(40, 51), kWhite);
  EXPECT_EQ(At(40, 68), kWhite);
  EXPECT_EQ(At(40, 69), kBlack);
  EXPECT_EQ(At(40, 70), kBlack);
  EXPECT_EQ(At(40, 71), kWhite);
}

TEST_F(DcCanvasOnFineDots, PutsStraightLinesOnWholeDots) {
  m_canvas->DrawLine(Role::kTick, {10.3, 5}, {10.3, 25}, {kBlack, 0.5});
  ASSERT_EQ(Image().GetWidth(), 2 * kWidth);
  EXPECT_EQ(At(19, 30), kWhite);
  EXPECT_EQ(At(20, 30), kBlack);
  EXPECT_EQ(At(21, 30), kWhite);
}

TEST_F(DcCanvasTest, JoinsTheLinesOfACurve) {
  CurveShape curve;
  curve.lines = {{{10, 10}, {60, 10}, {60, 60}}, {{100, 60}, {150, 60}}};
  curve.pen = {kBlue, 3};
  m_canvas->DrawCurve(Role::kCurve, curve);
  EXPECT_EQ(At(30, 10), kBlue);
  EXPECT_EQ(At(60, 40), kBlue);
  EXPECT_EQ(At(120, 60), kBlue);
  EXPECT_EQ(At(80, 60), kWhite) << "the lines are not joined to each other";
  EXPECT_EQ(At(35, 35), kWhite) << "and not filled";
}

TEST_F(DcCanvasTest, BreaksDashedLines) {
  CurveShape curve;
  curve.pen = {kBlue, 2, Dashes::kDashed};
  curve.lines = {{{0, 10}, {200, 10}}};
  m_canvas->DrawCurve(Role::kCurve, curve);
  curve.pen.dashes = Dashes::kDotted;
  curve.lines = {{{0, 50}, {200, 50}}};
  m_canvas->DrawCurve(Role::kCurve, curve);
  EXPECT_EQ(At(4, 10), kBlue);
  EXPECT_EQ(At(10, 10), kWhite);
  EXPECT_EQ(At(14, 10), kBlue);
  EXPECT_EQ(At(0, 50), kBlue);
  EXPECT_EQ(At(3, 50), kWhite);
  EXPECT_EQ(At(7, 50), kBlue);
}

TEST_F(DcCanvasTest, DrawsTheMarkersOfEachShape) {
  CurveShape curve;
  curve.pen = {kRed, 2};
  curve.radius = 10;
  for (const MarkerShape shape :
       {MarkerShape::kCircle, MarkerShape::kDiamond, MarkerShape::kCross}) {
    curve.shape = shape;
    curve.markers = {{30 + 50.0 * static_cast<int>(shape), 50}};
    m_canvas->DrawCurve(Role::kCurve, curve);
  }
  for (const int centre : {30, 80, 130}) {
    EXPECT_NE(At(centre - 10, 50), kWhite) << centre;
    EXPECT_NE(At(centre + 9, 50), kWhite) << centre;
    EXPECT_NE(At(centre, 40), kWhite) << centre;
    EXPECT_EQ(At(centre, 50), centre == 130 ? kRed : kWhite);
  }
  EXPECT_NE(At(37, 43), kWhite) << "a circle";
  EXPECT_EQ(At(87, 42), kWhite) << "a diamond";
  EXPECT_EQ(At(139, 41), kWhite) << "a cross";
}

TEST_F(DcCanvasTest, FillsPolygonsWithoutSeams) {
  m_canvas->FillPolygons(Role::kBand, {{{10, 10}, {50.5, 10}, {50.5, 60}, {10, 60}}}, kBlue);
  m_canvas->FillPolygons(Role::kBand, {{{50.5, 10}, {90, 10}, {90, 60}, {50.5, 60}}}, kBlue);
  for (int x = 12; x < 88; ++x) EXPECT_EQ(At(x, 35), kBlue) << x;
}

TEST_F(DcCanvasTest, PaintsNothingOutsideAClip) {
  m_canvas->BeginClip({20, 30, 40, 10});
  m_canvas->DrawRect(Role::kBand, {0, 0, kWidth, kHeight}, kRed, std::nullopt);
  m_canvas->EndClip();
  m_canvas->DrawRect(Role::kBand, {100, 0, 1, 1}, kRed, std::nullopt);
  EXPECT_EQ(At(100, 0), kRed);
  EXPECT_EQ(At(20, 30), kRed);
  EXPECT_EQ(At(59, 39), kRed);
  EXPECT_EQ(At(60, 39), kWhite);
  EXPECT_EQ(At(20, 40), kWhite);
}

TEST_F(DcCanvasTest, MeasuresTextAsItDrawsIt) {
  const double width = m_canvas->TextWidth("Iterations", 20);
  m_canvas->DrawText({Role::kTitle, "Iterations", 20, {20, 50}, Anchor::kStart});
  EXPECT_NEAR(Painted().GetLeft(), 20, 3);
  EXPECT_NEAR(Painted().GetRight(), 20 + width, 3);
}

// Of what the fonts of a picture file have, give or take the face.
void ExpectFontsOfTheHeightAsked(const Canvas& canvas) {
  for (const double size : {9.1, 13.0, 32.0}) {
    const double width = canvas.TextWidth("Training Set Targets", size);
    EXPECT_NEAR(width / PictureTextWidth("Training Set Targets", size), 1, 0.15) << size;
  }
}

TEST_F(DcCanvasTest, HasFontsOfTheHeightAsked) {
  ExpectFontsOfTheHeightAsked(*m_canvas);
}

TEST_F(DcCanvasOnFineDots, HasFontsOfTheHeightAsked) {
  ExpectFontsOfTheHeightAsked(*m_canvas);
}

TEST_F(DcCanvasTest, PutsTextAtItsAnchor) {
  m_canvas->DrawText({Role::kTitle, "HH", 20, {100, 25}, Anchor::kEnd});
  const wxRect end = Painted();
  EXPECT_NEAR(end.GetRight(), 100, 3);
  EXPECT_NEAR(end.GetTop() + end.height / 2.0, 25, 1.5) << "capitals are halfway up the line";
}

TEST_F(DcCanvasTest, PutsTextAroundItsMiddle) {
  m_canvas->DrawText({Role::kTitle, "HH", 20, {100, 25}, Anchor::kMiddle});
  EXPECT_NEAR(Painted().GetLeft() + Painted().width / 2.0, 100, 1.5);
}

TEST_F(DcCanvasTest, TurnsTextThatRunsUpwards) {
  m_canvas->DrawText({Role::kYLabel, "HHH", 20, {40, 90}, Anchor::kStart, true});
  EXPECT_GT(Painted().height, Painted().width);
  EXPECT_NEAR(Painted().GetLeft() + Painted().width / 2.0, 40, 1.5);
  EXPECT_NEAR(Painted().GetBottom(), 90, 3);
}

TEST_F(DcCanvasTest, DrawsTextInItsColour) {
  TextLine text = {Role::kLegend, "\u2588\u2588", 40, {100, 50}, Anchor::kMiddle};
  text.colour = kRed;
  m_canvas->DrawText(text);
  EXPECT_EQ(At(100, 50), kRed);
}

}  // namespace
}  // namespace tarn

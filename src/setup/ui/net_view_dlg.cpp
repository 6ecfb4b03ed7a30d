#include "setup/ui/net_view_dlg.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <utility>
#include <vector>
#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/menu.h>
#include <wx/xrc/xmlres.h>

#include "netfile/connections_section.h"
#include "resources/controls.h"
#include "resources/fonts.h"
#include "setup/ui/native_settings.h"

namespace tarn {
namespace {

constexpr int kExit = 101;
constexpr const char* kCaption = "Network Design";

// Of the page, which is white under every theme.
const wxSize kFirstSize(640, 480);
const wxSize kLeastSize(160, 120);

// Connections that are drawn within a moment; with more the cursor says that it takes longer.
constexpr int64_t kQuickConnections = 50'000;

// Lines fainter than that are many: smooth edges cost much and show nothing.
constexpr int32_t kSmoothOpacity = 64;

wxColour LineColour(int32_t opacity) {
  return {64, 104, 160, static_cast<unsigned char>(opacity)};
}

void DrawLine(wxGraphicsContext& canvas, const DrawnLine& line) {
  canvas.StrokeLine(line.from.x, line.from.y, line.to.x, line.to.y);
}

void DrawText(wxGraphicsContext& canvas, const DrawnText& drawn) {
  const wxString text = Wide(drawn.text);
  double width = 0;
  double height = 0;
  canvas.GetTextExtent(text, &width, &height);
  canvas.DrawText(text, drawn.centre.x - width / 2, drawn.centre.y - height / 2);
}

void DrawArrow(wxGraphicsContext& canvas, const DrawnArrow& arrow) {
  DrawLine(canvas, arrow.shaft);
  std::array<wxPoint2DDouble, 4> outline;
  for (size_t i = 0; i < outline.size(); ++i) {
    const PagePoint corner = arrow.head[i % arrow.head.size()];
    outline[i] = wxPoint2DDouble(corner.x, corner.y);
  }
  canvas.DrawLines(outline.size(), outline.data());
}

void DrawNode(wxGraphicsContext& canvas, PagePoint centre, int32_t diameter) {
  canvas.DrawEllipse(centre.x - diameter / 2.0, centre.y - diameter / 2.0, diameter, diameter);
}

}  // namespace

NetViewDlg::NetViewDlg(wxWindow* parent, const Network& network, std::string scratch_folder,
                       Dialogs& dialogs)
    : wxFrame(parent, wxID_ANY, kCaption),
      m_network(network),
      m_scratch_folder(std::move(scratch_folder)),
      m_dialogs(dialogs),
      m_page(new wxWindow) {
  // Keys and commands of this window are none of its parent's.
  SetExtraStyle(GetExtraStyle() | wxWS_EX_BLOCK_EVENTS);
  SetProgramIcon(*this);
  SetMenuBar(wxXmlResource::Get()->LoadMenuBar("VIEW_MENU"));
  Bind(
      wxEVT_MENU, [this](wxCommandEvent&) { Close(); }, kExit);
  Bind(wxEVT_CHAR_HOOK, &NetViewDlg::OnKey, this);
  MakePage();
  SetClientSize(FromDIP(kFirstSize));
  SetMinClientSize(FromDIP(kLeastSize));
  UseBesideModalDialogs(*this);
}

// GTK shows the key in the menu but does not listen to it.
void NetViewDlg::OnKey(wxKeyEvent& event) {
  if (event.GetKeyCode() == WXK_ESCAPE) {
    Close();
  } else {
    event.Skip();
  }
}

void NetViewDlg::MakePage() {
  m_page->SetBackgroundStyle(wxBG_STYLE_PAINT);
  m_page->Create(this, wxID_ANY);
  m_page->Bind(wxEVT_PAINT, [this](wxPaintEvent&) { Paint(); });
  m_page->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    m_page->Refresh();
    event.Skip();
  });
  m_page->SetFocus();
}

void NetViewDlg::Redraw() {
  m_picture = wxNullBitmap;
  m_page->Refresh();
}

void NetViewDlg::Paint() {
  wxPaintDC dc(m_page);
  const wxSize size = m_page->GetClientSize();
  if (size.x < 1 || size.y < 1) return;
  if (!m_picture.IsOk() || m_picture.GetLogicalSize() != size) {
    if (ConnectionCount(m_network) > kQuickConnections) {
      WhileBusy(m_dialogs, [this, size] { DrawPicture(size); });
    } else {
      DrawPicture(size);
    }
  }
  dc.DrawBitmap(m_picture, 0, 0);
}

void NetViewDlg::DrawPicture(wxSize size) {
  m_picture.CreateWithDIPSize(size, m_page->GetContentScaleFactor());
  wxMemoryDC dc(m_picture);
  dc.SetBackground(*wxWHITE_BRUSH);
  dc.Clear();
  const std::unique_ptr<wxGraphicsContext> canvas(wxGraphicsContext::Create(dc));
  if (canvas == nullptr) return;
  canvas->EnableOffset(true);
  Draw(*canvas, {size.x, size.y});
}

void NetViewDlg::Draw(wxGraphicsContext& canvas, PageSize page) {
  canvas.SetFont(DrawableFont(m_page->GetFont()), *wxBLACK);
  const NetworkDrawing drawing = DrawNetwork(m_network, page, m_page->GetTextExtent("X").y);
  for (const DrawnText& text : drawing.texts) DrawText(canvas, text);
  canvas.SetPen(*wxBLACK_PEN);
  canvas.SetBrush(*wxBLACK_BRUSH);
  for (const DrawnArrow& arrow : drawing.arrows) DrawArrow(canvas, arrow);
  for (int32_t layer = 1; layer < m_network.nLayers; ++layer) {
    DrawConnections(canvas, page, layer);
  }
  canvas.SetAntialiasMode(wxANTIALIAS_DEFAULT);
  canvas.SetPen(*wxBLACK_PEN);
  canvas.SetBrush(wxBrush(wxColour(255, 244, 204)));
  for (const PagePoint node : drawing.nodes) DrawNode(canvas, node, drawing.diameter);
  for (const DrawnLine& mark : drawing.marks) DrawLine(canvas, mark);
}

void NetViewDlg::DrawConnections(wxGraphicsContext& canvas, PageSize page, int32_t layer) {
  const int32_t opacity = ConnectionOpacity(m_network, page, layer);
  canvas.SetPen(wxPen(LineColour(opacity)));
  canvas.SetAntialiasMode(opacity < kSmoothOpacity ? wxANTIALIAS_NONE : wxANTIALIAS_DEFAULT);
  try {
    ForEachConnection(m_network, page, layer,
                      RemovedConnections(m_network, layer, m_scratch_folder),
                      [&canvas](const DrawnLine& line) { DrawLine(canvas, line); });
  } catch (const std::bad_alloc&) {
    // The layers stand without lines between them.
  }
}

}  // namespace tarn

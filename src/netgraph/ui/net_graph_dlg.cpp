#include "netgraph/ui/net_graph_dlg.h"

#include <memory>
#include <string>
#include <utility>
#include <wx/dataobj.h>
#include <wx/menu.h>
#include <wx/statusbr.h>
#include <wx/xrc/xmlres.h>

#include "app/messages.h"
#include "netgraph/bitmap_file.h"
#include "netgraph/graph_csv.h"
#include "netgraph/graph_file.h"
#include "netgraph/messages.h"
#include "netgraph/picture_request.h"
#include "netgraph/ui/graph_bitmap.h"
#include "netgraph/ui/graph_printout.h"
#include "resources/clipboard.h"
#include "resources/commands.h"
#include "resources/controls.h"
#include "resources/printing.h"

namespace tarn {
namespace {

enum Command : int {
  kToggleLegend = 139,
  kZoom = 140,
  kResetZoom = 141,
  kExportPicture = 153,
  kExportData = 154,
  kCopyData = 155,
};

constexpr Size kOpeningSize = {640, 480};

// In the pixels of the display that `window` is on.
wxSize PixelsOf(const wxWindow& window, const Size& size) {
  return window.FromDIP(wxSize(static_cast<int>(size.width), static_cast<int>(size.height)));
}

}  // namespace

NetGraphDlg::NetGraphDlg(wxWindow* owner, Graph graph, Dialogs& dialogs,
                         std::function<int()> colour_depth)
    : wxFrame(owner, wxID_ANY, Wide(kNetGraphCaption)),
      m_dialogs(dialogs),
      m_colour_depth(std::move(colour_depth)) {
  SetProgramIcon(*this);
  // The owner has commands of the same numbers.
  SetExtraStyle(GetExtraStyle() | wxWS_EX_BLOCK_EVENTS);
  SetMenuBar(wxXmlResource::Get()->LoadMenuBar("GRAPH_MENU"));
  CreateStatusBar(kStatusFields);
  GraphPanel::Listener listener;
  listener.cannot_draw = [this](const Message& message) {
    CallAfter([this, message] { EndWith(message); });
  };
  listener.zoom_mode_changed = [this] { ShowZoomHint(); };
  listener.read_out = [this](const std::string& text) {
    if (Utf8(GetStatusBar()->GetStatusText(kStatusField)) != text) {
      SetStatusText(Wide(text), kStatusField);
    }
  };
  m_panel = new GraphPanel(this, std::move(graph), dialogs, std::move(listener));
  Bind(wxEVT_MENU, &NetGraphDlg::OnMenu, this);
  Bind(wxEVT_CHAR_HOOK, &NetGraphDlg::OnKey, this);
  Bind(wxEVT_CLOSE_WINDOW, &NetGraphDlg::OnClose, this);
  SetMinClientSize(PixelsOf(*this, kSmallestPicture));
  SetClientSize(PixelsOf(*this, kOpeningSize));
  m_panel->SetFocus();
}

NetGraphDlg::~NetGraphDlg() {
  // It tells this window of what happens to it: it goes first.
  m_panel->Destroy();
}

void NetGraphDlg::OnMenu(wxCommandEvent& event) {
  switch (event.GetId()) {
    case kSaveAsCommand:
      return SaveBitmap();
    case kPrintCommand:
      return Print();
    case kPreviewCommand:
      return Preview();
    case kPageSetupCommand:
      return SetUpPage(*this);
    case kExportPicture:
      return ExportPicture();
    case kExportData:
      return ExportData();
    case kExitCommand:
      Close();
      return;
    case kCopyCommand:
      return Copy();
    case kCopyData:
      return CopyData();
    case kToggleLegend:
      return m_panel->ToggleLegend();
    case kZoom:
      return m_panel->BeginZoom();
    case kResetZoom:
      return m_panel->ResetZoom();
    case kHelpCommand:
      return m_dialogs.ShowHelp(HelpTopic::kNetGraph);
    default:
      event.Skip();
  }
}

void NetGraphDlg::OnKey(wxKeyEvent& event) {
  if (event.GetKeyCode() != WXK_ESCAPE || event.HasAnyModifiers() || m_menus.IsOpen()) {
    event.Skip();
  } else if (m_panel->IsZooming()) {
    m_panel->EndZoom();
  } else {
    Close();
  }
}

// Not while a dialog asks on its behalf.
void NetGraphDlg::OnClose(wxCloseEvent& event) {
  if (event.CanVeto() && m_dialogs.IsAsking()) {
    event.Veto();
  } else {
    Destroy();
  }
}

void NetGraphDlg::EndWith(const Message& message) {
  m_dialogs.Tell(message);
  Close(true);
}

void NetGraphDlg::ShowZoomHint() {
  SetStatusText(m_panel->IsZooming() ? Wide(kZoomHint) : wxString(), kHintField);
}

void NetGraphDlg::SaveBitmap() {
  if (const std::optional<BitmapRefusal> refusal = CheckBitmapDepth(m_colour_depth())) {
    m_dialogs.Tell(refusal->told);
    if (m_dialogs.Ask(refusal->offer, AnswerChoice::kYesNo) == Answer::kYes) Copy();
    return;
  }
  const std::optional<std::string> path = m_dialogs.ChooseFile(kSaveBitmapQuestion);
  if (!path) return;
  const wxBitmap picture = m_panel->Picture();
  if (!picture.IsOk()) return TellFailure(Status::Failure(kGraphNotSaved));
  TellFailure(WhileBusy(m_dialogs, [&] {
    return SaveGraphBytes(BitmapFile(RasterOf(picture), m_colour_depth()), *path);
  }));
}

void NetGraphDlg::ExportPicture() {
  const std::optional<Size> size = AskForSize();
  if (!size) return;
  while (const std::optional<std::string> path = m_dialogs.ChooseFile(kExportPictureQuestion)) {
    PictureKind kind = PictureKind::kPng;
    const Status known = PictureKindOf(*path, kind);
    TellFailure(known);
    if (!known.ok()) continue;
    TellFailure(WhileBusy(m_dialogs, [&] { return SaveAsPicture(kind, *size, *path); }));
    return;
  }
}

Status NetGraphDlg::SaveAsPicture(PictureKind kind, const Size& size, const std::string& path) {
  return kind == PictureKind::kSvg ? SavePicture(m_panel->graph(), m_panel->view(), size, path)
                                   : SavePng(m_panel->graph(), m_panel->view(), size, path);
}

std::optional<Size> NetGraphDlg::AskForSize() {
  std::string text = PictureSizeText(m_panel->PageSize());
  while (true) {
    const std::optional<std::string> entered =
        m_dialogs.EnterValue(kPictureSizeCaption, kPictureSizePrompt, text);
    if (!entered) return std::nullopt;
    text = *entered;
    Size size;
    const Status read = ParsePictureSize(text, size);
    if (read.ok()) return size;
    TellFailure(read);
  }
}

void NetGraphDlg::ExportData() {
  const std::optional<std::string> path = m_dialogs.ChooseFile(kExportDataQuestion);
  if (!path) return;
  TellFailure(WhileBusy(m_dialogs, [&] { return SaveTable(m_panel->graph(), *path); }));
}

void NetGraphDlg::TellFailure(const Status& status) {
  if (!status.ok()) m_dialogs.Tell(kNetGraphErrorCaption, status.message());
}

void NetGraphDlg::Copy() {
  const wxBitmap picture = m_panel->Picture();
  if (!picture.IsOk() || !PutOnClipboard(std::make_unique<wxBitmapDataObject>(picture))) {
    TellFailure(Status::Failure(kGraphNotCopied));
  }
}

void NetGraphDlg::CopyData() {
  auto text = std::make_unique<wxTextDataObject>(Wide(GraphCsv(m_panel->graph())));
  if (!PutOnClipboard(std::move(text))) TellFailure(Status::Failure(kGraphNotCopied));
}

void NetGraphDlg::Print() {
  GraphPrintout printout(m_panel->graph(), m_panel->view(), m_panel->PageSize());
  TarnPrinter().PrintAsking(*this, printout);
  if (printout.refused()) m_dialogs.Tell(*printout.refused());
}

void NetGraphDlg::Preview() {
  const bool shown = PreviewPrint(*this, [&] {
    return std::make_unique<GraphPrintout>(m_panel->graph(), m_panel->view(), m_panel->PageSize());
  });
  if (!shown) TellFailure(Status::Failure(kNoPreview));
}

}  // namespace tarn

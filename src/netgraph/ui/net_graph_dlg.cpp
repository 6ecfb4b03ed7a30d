#include "netgraph/ui/net_graph_dlg.h"

#include <memory>
#include <string>
#include <utility>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/filename.h>
#include <wx/menu.h>
#include <wx/statusbr.h>
#include <wx/xrc/xmlres.h>

#include "netgraph/bitmap_file.h"
#include "netgraph/graph_csv.h"
#include "netgraph/graph_file.h"
#include "netgraph/messages.h"
#include "netgraph/picture_size.h"
#include "netgraph/ui/graph_bitmap.h"
#include "netgraph/ui/graph_printout.h"
#include "resources/controls.h"
#include "resources/printing.h"

namespace tarn {
namespace {

enum Command : int {
  kSaveAs = 136,
  kPrint = 137,
  kCopy = 138,
  kToggleLegend = 139,
  kZoom = 140,
  kResetZoom = 141,
  kExit = 143,
  kPreview = 151,
  kPageSetup = 152,
  kExportPicture = 153,
  kExportData = 154,
  kCopyData = 155,
  kHelp = 24341,
};

// The first for the hints of the menus and of zoom mode, the second for the data under the pointer.
constexpr int kStatusFields = 2;
constexpr int kHintField = 0;
constexpr int kReadOutField = 1;

constexpr Size kOpeningSize = {640, 480};

// In the pixels of the display that `window` is on.
wxSize PixelsOf(const wxWindow& window, const Size& size) {
  return window.FromDIP(wxSize(static_cast<int>(size.width), static_cast<int>(size.height)));
}

bool IsSvg(const std::string& path) {
  return wxFileName(Wide(path)).GetExt().IsSameAs("svg", false);
}

// Takes the data; false where the clipboard does not.
bool PutOnClipboard(std::unique_ptr<wxDataObject> data) {
  if (!wxTheClipboard->Open()) return false;
  const bool taken = wxTheClipboard->SetData(data.release());
  // It stays there when the program ends.
  wxTheClipboard->Flush();
  wxTheClipboard->Close();
  return taken;
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
    if (Utf8(GetStatusBar()->GetStatusText(kReadOutField)) != text) {
      SetStatusText(Wide(text), kReadOutField);
    }
  };
  m_panel = new GraphPanel(this, std::move(graph), dialogs, std::move(listener));
  Bind(wxEVT_MENU, &NetGraphDlg::OnMenu, this);
  Bind(wxEVT_CHAR_HOOK, &NetGraphDlg::OnKey, this);
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
    case kSaveAs:
      return SaveBitmap();
    case kPrint:
      return Print();
    case kPreview:
      return Preview();
    case kPageSetup:
      return SetUpPage(*this);
    case kExportPicture:
      return ExportPicture();
    case kExportData:
      return ExportData();
    case kExit:
      Close();
      return;
    case kCopy:
      return Copy();
    case kCopyData:
      return CopyData();
    case kToggleLegend:
      return m_panel->ToggleLegend();
    case kZoom:
      return m_panel->BeginZoom();
    case kResetZoom:
      return m_panel->ResetZoom();
    case kHelp:
      return m_dialogs.ShowHelp(HelpTopic::kNetGraph);
    default:
      event.Skip();
  }
}

void NetGraphDlg::OnKey(wxKeyEvent& event) {
  if (event.GetKeyCode() != WXK_ESCAPE || event.HasAnyModifiers()) {
    event.Skip();
  } else if (m_panel->IsZooming()) {
    m_panel->EndZoom();
  } else {
    Close();
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
    return SaveGraphFile(BitmapFile(RasterOf(picture), m_colour_depth()), *path);
  }));
}

void NetGraphDlg::ExportPicture() {
  const std::optional<Size> size = AskForSize();
  if (!size) return;
  const std::optional<std::string> path = m_dialogs.ChooseFile(kExportPictureQuestion);
  if (!path) return;
  TellFailure(WhileBusy(m_dialogs, [&] {
    return IsSvg(*path) ? SavePicture(m_panel->graph(), m_panel->view(), *size, *path)
                        : SavePng(m_panel->graph(), m_panel->view(), *size, *path);
  }));
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
  PreviewPrint(*this, [&] {
    return std::make_unique<GraphPrintout>(m_panel->graph(), m_panel->view(), m_panel->PageSize());
  });
}

}  // namespace tarn

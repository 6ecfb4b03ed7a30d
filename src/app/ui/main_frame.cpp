#include "app/ui/main_frame.h"

#include <array>
#include <fmt/printf.h>
#include <new>
#include <utility>
#include <wx/accel.h>
#include <wx/app.h>
#include <wx/display.h>
#include <wx/menu.h>
#include <wx/xrc/xmlres.h>

#include "app/messages.h"
#include "app/saving.h"
#include "app/ui/about_dlg.h"
#include "app/ui/hint_bar.h"
#include "app/ui/messages.h"
#include "app/ui/opened.h"
#include "app/ui/recall_run_dlg.h"
#include "app/ui/window_dialogs.h"
#include "base/paths.h"
#include "engine/training_figures.h"
#include "netfile/configuration_file.h"
#include "netgraph/messages.h"
#include "resources/commands.h"
#include "resources/controls.h"
#include "setup/ui/native_settings.h"
#include "setup/ui/rec_data_dlg.h"
#include "setup/ui/trn_setup_dlg.h"

namespace tarn {
namespace {

enum Command : int {
  kTrainRestart = 129,
  kTrainExit = 130,
  kSaveRecallOutputs = 202,
  kRecallRestart = 229,
  kRecallExit = 230,
  kAbout = 24346,
};

// Keys without a menu.
constexpr int kOpenKey = wxID_HIGHEST + 1;
constexpr int kEscapeKey = wxID_HIGHEST + 2;

// Of the recall window, in dialog units.
const wxSize kRecallSize(163, 127);

// The longest text that the training window shows in its status bar.
std::string LongTrainingStatus() {
  constexpr int kAll = 100;
  return fmt::sprintf(kHiddenNodesProgress.data(), kAll);
}

constexpr const char* kFirstCaption = "Tarn for Windows";
constexpr const char* kStartUpClient = "StartUp";
constexpr const char* kTrainingClient = "Training";
constexpr const char* kRecallClient = "Recall";

// False when no modal dialog of our own is open.
bool EndInnermostDialog() {
  auto* dialog = dynamic_cast<wxDialog*>(DialogParent());
  if (dialog != nullptr) dialog->EndModal(kCancelId);
  return dialog != nullptr;
}

bool IsOnADisplay(const wxPoint& position) {
  // The part of the title by which it can be moved.
  return wxDisplay::GetFromPoint(position + wxPoint(50, 10)) != wxNOT_FOUND;
}

}  // namespace

TMain::TMain(Session& session, Dialogs& dialogs, const ApplicationPaths& paths, const Clock& clock)
    : wxFrame(nullptr, wxID_ANY, kFirstCaption),
      m_session(session),
      m_dialogs(dialogs),
      m_paths(paths),
      m_clock(clock) {
  SetProgramIcon(*this);
  SetExtraStyle(GetExtraStyle() | wxWS_EX_PROCESS_IDLE);
  Bind(wxEVT_IDLE, &TMain::OnIdle, this);
  Bind(wxEVT_MENU, &TMain::OnMenu, this);
  Bind(wxEVT_CLOSE_WINDOW, &TMain::OnClose, this);
  Bind(wxEVT_ICONIZE, &TMain::OnIconize, this);
  Bind(wxEVT_HELP, &TMain::OnHelp, this);
  Bind(wxEVT_MENU_OPEN, &TMain::OnMenuOpen, this);
  Bind(wxEVT_MENU_CLOSE, &TMain::OnMenuClose, this);
  const std::array keys = {wxAcceleratorEntry(wxACCEL_CTRL, 'O', kOpenKey),
                           wxAcceleratorEntry(wxACCEL_NORMAL, WXK_F1, kHelpCommand),
                           wxAcceleratorEntry(wxACCEL_NORMAL, WXK_ESCAPE, kEscapeKey)};
  SetAcceleratorTable(wxAcceleratorTable(static_cast<int>(keys.size()), keys.data()));
  ShowStartUp();
  const wxPoint position = m_settings.Position();
  if (IsOnADisplay(position)) {
    Move(position);
  } else {
    Centre();
  }
}

TMain::~TMain() {
  // The windows know the network: they go first.
  m_study.reset();
  DestroyChildren();
  m_session.network = {};
  WriteConfigurationFile();
}

void TMain::EndOutOfMemory() {
  // Once: the messages themselves may find no memory.
  if (std::exchange(m_out_of_memory, true)) return;
  if (m_loader != nullptr) EndLoad();
  // Files first: what comes after may want memory.
  if (m_study != nullptr) m_study->RemoveFiles();
  if (m_training != nullptr) m_training->Abandon();
  m_session.scratch.Remove();
  if (m_study != nullptr) m_study->StopTask();
  m_dialogs.Tell(kTarnErrorCaption, kOutOfMemory);
  m_dialogs.Tell(kTarnErrorCaption, kAborting);
}

void TMain::OfferInterruptedRuns(const std::vector<InterruptedRun>& runs) {
  tarn::OfferInterruptedRuns(runs, m_session, m_dialogs);
  UpdateCaption();
}

void TMain::New() {
  StartNewNetwork(m_session);
  UpdateCaption();
  m_start_up->SelectMode(RunMode::kTraining);
  Run(RunMode::kTraining);
}

void TMain::Open() {
  const std::optional<std::string> path = m_dialogs.ChooseFile(kOpenNetworkQuestion);
  if (path) OpenFile(*path);
}

void TMain::OpenFile(const std::string& path) {
  if (m_start_up == nullptr || !IsFree()) return;
  if (IsUntitled(path)) {
    TakeUntitled(m_session, path);
    UpdateCaption();
    return;
  }
  const Status opened = OpenNetwork(m_session, path);
  if (!opened.ok()) m_dialogs.Tell(path, opened.message());
  UpdateCaption();
}

void TMain::Run(RunMode mode) {
  if (const std::optional<Message> message = CheckRun(mode, m_session.network)) {
    m_dialogs.Tell(*message);
  } else if (mode == RunMode::kTraining) {
    SetUpTraining();
  } else {
    SetUpRecall();
  }
}

void TMain::SetUpTraining() {
  m_session.network.mode = Mode::kTraining;
  m_session.network.RecallTargets = true;
  TrnSetupDlg setup(this, m_session, m_dialogs, m_paths, [this] { UpdateCaption(); });
  if (ShowModal(setup) != kOkId) return;
  KeepUntitledSetup(m_session);
  BeginLoad(NetworkLoader::Kind::kEdited, setup.stored_shape());
}

void TMain::SetUpRecall() {
  m_session.network.mode = Mode::kRecall;
  RecDataDlg data(this, m_session.network, m_dialogs, m_paths);
  if (ShowModal(data) == kOkId) BeginLoad(NetworkLoader::Kind::kRecall, {});
}

void TMain::About() {
  AboutDlg about(this);
  ShowModal(about);
}

int TMain::ShowModal(wxDialog& dialog) {
  const Opened opened(m_open_dialogs);
  return dialog.ShowModal();
}

void TMain::BeginLoad(NetworkLoader::Kind kind, const NetworkShape& stored) {
  m_load_kind = kind;
  m_notices.clear();
  m_loader = std::make_unique<NetworkLoader>(m_session, kind, stored);
  m_busy.emplace();
  m_client->Disable();
  m_status_box = new StatusDlg(this);
  m_step_shown = false;
  m_status_box->Show();
  wxWakeUpIdle();
}

// One turn shows what is coming, the next one does it: the box is painted in between.
void TMain::LoadOneStep() {
  if (!m_step_shown) {
    m_status_box->ShowStep(m_loader->NextStep());
    m_step_shown = true;
    return;
  }
  m_step_shown = false;
  const Status done = m_loader->DoStep(m_notices);
  if (done.ok() && !m_loader->NextStep().empty()) return;
  EndLoad();
  if (done.message() == kOutOfMemory) throw std::bad_alloc();
  for (const std::string& notice : m_notices) m_dialogs.Tell(kTarnWarningCaption, notice);
  if (!done.ok()) {
    m_dialogs.Tell(kTarnErrorCaption, done.message());
    m_start_up->FocusRun();
  } else if (m_load_kind == NetworkLoader::Kind::kRecall) {
    ShowRecall();
  } else {
    ShowTraining();
  }
}

void TMain::EndLoad() {
  m_loader.reset();
  m_busy.reset();
  m_status_box->Destroy();
  m_status_box = nullptr;
  m_client->Enable();
}

void TMain::ShowStartUp() {
  StartUpActions actions;
  actions.new_network = [this] { New(); };
  actions.open = [this] { Open(); };
  actions.open_file = [this](const std::string& path) { OpenFile(path); };
  actions.run = [this](RunMode mode) { Run(mode); };
  actions.help = [this] { ShowHelp(); };
  actions.about = [this] { About(); };
  actions.exit = [this] { Close(); };
  ClearClient(kStartUpClient, nullptr);
  m_start_up = new StartUpWindow(this, std::move(actions));
  TakeClient(m_start_up);
}

void TMain::ShowTraining() {
  ClearClient(kTrainingClient, "TRAIN_MENU");
  SetStatusBar(new HintBar(*this, LongTrainingStatus()));
  m_training = new TrainRunDlg(*this, m_session, m_dialogs, m_clock, [this] { FiguresShown(); });
  TakeClient(m_training);
  m_study = std::make_unique<StudyWindows>(*this, m_session, m_dialogs, m_clock,
                                           m_training->desk().history_path());
}

void TMain::ShowRecall() {
  ClearClient(kRecallClient, "RECALL_MENU");
  SetStatusBar(new HintBar(*this, kRecallComplete));
  TakeClient(new RecallRunDlg(this, m_session.network), ConvertDialogToPixels(kRecallSize));
  Centre();
  m_study = std::make_unique<StudyWindows>(*this, m_session, m_dialogs, m_clock);
  SetStatusText(Wide(kRecallComplete), kStatusField);
}

void TMain::ClearClient(const char* next, const char* menu) {
  RememberGeometry();
  m_study.reset();
  m_start_up = nullptr;
  m_training = nullptr;
  if (m_client != nullptr) m_client->Destroy();
  m_client = nullptr;
  m_client_name = next;
  m_open_menu = nullptr;
  wxMenuBar* old_menu = GetMenuBar();
  SetMenuBar(menu != nullptr ? wxXmlResource::Get()->LoadMenuBar(menu) : nullptr);
  delete old_menu;
  if (menu != nullptr) SendHelpOfMenus(*this);
  wxStatusBar* old_status = GetStatusBar();
  SetStatusBar(nullptr);
  delete old_status;
}

void TMain::ShareStatusBar(bool menu_open) {
  if (auto* bar = dynamic_cast<HintBar*>(GetStatusBar())) bar->GiveAllToHints(menu_open);
}

// Of an open menu; the help of the window itself is a command.
void TMain::OnHelp(wxHelpEvent& event) {
  if (m_open_menu == nullptr) {
    event.Skip();
    return;
  }
  CloseMenu(*m_open_menu);
  CallAfter([this] {
    if (m_training != nullptr) {
      m_dialogs.ShowHelp(HelpTopic::kTrainingMenus);
    } else {
      ShowHelp();
    }
  });
}

void TMain::OnMenuOpen(wxMenuEvent& event) {
  event.Skip();
  m_open_menu = event.GetMenu();
  ShareStatusBar(true);
  if (m_study != nullptr && m_open_menu != nullptr) m_study->ShowObstacle(*m_open_menu);
}

void TMain::OnMenuClose(wxMenuEvent& event) {
  event.Skip();
  if (event.GetMenu() == m_open_menu) m_open_menu = nullptr;
  // After the frame has put back what the bar showed before. The next menu may be open by then.
  CallAfter([this] {
    if (m_open_menu != nullptr) return;
    ShareStatusBar(false);
    if (m_study != nullptr) m_study->ShowHint();
  });
}

void TMain::TakeClient(wxWindow* client, const wxSize& opening) {
  m_client = client;
  const wxSize least = client->GetBestSize();
  SetMinClientSize(least);
  wxSize size = m_settings.Size(m_client_name);
  if (size == wxSize()) size = opening;
  size.IncTo(least);
  SetClientSize(size);
  // The client fills the frame, whatever the size was before.
  Layout();
  UpdateCaption();
}

void TMain::RememberGeometry() {
  if (m_client == nullptr || IsIconized() || IsMaximized()) return;
  m_settings.Remember(GetPosition(), m_client_name, GetClientSize());
}

void TMain::UpdateCaption() {
  const Network& network = m_session.network;
  std::string caption = kFirstCaption;
  if (!network.file_name.empty()) caption = FrameCaption(network.file_name);
  if (m_iconized && m_training != nullptr) caption = MinimizedTitle(network);
  if (Utf8(GetTitle()) != caption) SetTitle(Wide(caption));
}

void TMain::FiguresShown() {
  UpdateCaption();
  if (m_study != nullptr) m_study->FollowRun();
}

bool TMain::IsFree() const {
  return m_loader == nullptr && m_open_dialogs == 0 && !m_dialogs.IsAsking();
}

void TMain::OnIdle(wxIdleEvent& event) {
  event.Skip();
  // A box of the system cannot be ended, nor the dialog beneath it.
  const bool may_end = m_close_forced && !m_dialogs.IsSystemAsking();
  if (may_end && !EndInnermostDialog() && IsFree()) Close(true);
  if (m_study != nullptr && m_study->Work()) event.RequestMore();
  if (m_loader == nullptr) return;
  LoadOneStep();
  event.RequestMore();
}

void TMain::OnMenu(wxCommandEvent& event) {
  switch (event.GetId()) {
    case kOpenKey:
      if (m_start_up != nullptr && IsFree()) Open();
      break;
    case kEscapeKey:
      if (m_study != nullptr) m_study->StopTask();
      break;
    case kTrainRestart:
    case kRecallRestart:
      // The client, which may be handling an event, is gone after it.
      CallAfter([this] { Restart(); });
      break;
    case kTrainExit:
    case kRecallExit:
      Close();
      break;
    case kSaveRecallOutputs:
      SaveOutputs(m_session, m_dialogs);
      break;
    case kHelpCommand:
      ShowHelp();
      break;
    case kAbout:
      About();
      break;
    default:
      if (!DoClientCommand(event.GetId())) event.Skip();
  }
}

bool TMain::DoClientCommand(int command) {
  if (m_training != nullptr && m_training->DoCommand(command)) return true;
  return m_study != nullptr && m_study->DoCommand(command);
}

void TMain::ShowHelp() {
  HelpTopic topic = HelpTopic::kRecallData;
  if (m_start_up != nullptr) topic = HelpTopic::kStartUp;
  if (m_training != nullptr) topic = HelpTopic::kTraining;
  m_dialogs.ShowHelp(topic);
}

void TMain::OnClose(wxCloseEvent& event) {
  if (m_loader != nullptr) EndLoad();
  if (event.CanVeto() && (!IsFree() || !MayLeaveClient())) {
    event.Veto();
    return;
  }
  if (m_training != nullptr) m_training->StopTraining();
  if (!IsFree()) {
    // The dialogs are in the midst of their loops: they end first, one by one, if there is time.
    if (m_training != nullptr) m_training->KeepNetwork();
    m_close_forced = true;
    wxWakeUpIdle();
    return;
  }
  // Where nobody could be asked.
  if (m_training != nullptr && !event.CanVeto()) m_training->LeaveNetwork();
  RememberGeometry();
  Destroy();
}

void TMain::OnIconize(wxIconizeEvent& event) {
  m_iconized = event.IsIconized();
  UpdateCaption();
  event.Skip();
}

// Training waits while the user is asked, and goes on when the user stays.
bool TMain::MayLeaveClient() {
  if (m_training == nullptr) return true;
  m_training->Hold(true);
  const bool leave = MayLeave(m_session, m_dialogs);
  if (leave) m_training->StopTraining();
  m_training->Hold(false);
  UpdateCaption();
  return leave;
}

void TMain::Restart() {
  if (!IsFree()) return;
  if (!MayLeaveClient()) return;
  const std::string path = m_session.network.file_name;
  ShowStartUp();
  m_session.network = {};
  // The same network is at hand again, as its file now is.
  if (!IsUntitled(path)) (void)OpenNetwork(m_session, path);
  UpdateCaption();
}

}  // namespace tarn

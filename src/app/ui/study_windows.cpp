#include "app/ui/study_windows.h"

#include <algorithm>
#include <wx/app.h>
#include <wx/menu.h>

#include "browser/ui/info_browser.h"
#include "resources/commands.h"
#include "resources/controls.h"

namespace tarn {
namespace {

// A slice of a task: short enough for the window to answer at once.
constexpr int64_t kSliceMs = 15;
// Of the time that a run takes, the part that its graphs may take: one in so many.
constexpr int64_t kFollowShare = 10;

std::vector<wxMenuItem*> ItemsOf(const wxMenuBar& bar) {
  std::vector<wxMenuItem*> items;
  for (size_t i = 0; i < bar.GetMenuCount(); ++i) {
    for (wxMenuItem* item : bar.GetMenu(i)->GetMenuItems()) items.push_back(item);
  }
  return items;
}

}  // namespace

StudyWindows::StudyWindows(wxFrame& frame, const Session& session, Dialogs& dialogs,
                           const Clock& clock, std::string history_path)
    : m_frame(frame),
      m_dialogs(dialogs),
      m_clock(clock),
      m_desk(session, dialogs, *this, clock, std::move(history_path)) {
  m_follow_timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { BringUpToDate(); });
  EnableCommands();
}

StudyWindows::~StudyWindows() {
  for (const wxWeakRef<wxFrame>& window : m_windows) {
    if (!window) continue;
    window->Unbind(wxEVT_CHAR_HOOK, &StudyWindows::OnKey, this);
    window->Destroy();
  }
}

void StudyWindows::RemoveFiles() {
  m_follow_timer.Stop();
  m_followers.clear();
  for (const wxWeakRef<wxFrame>& window : m_windows) {
    if (auto* report = dynamic_cast<InfoBrowser*>(window.get())) report->DiscardReport();
  }
}

bool StudyWindows::Work() {
  return m_desk.Work(kSliceMs);
}

NetGraphDlg* StudyWindows::Open(Graph graph) {
  auto* window = new NetGraphDlg(&m_frame, std::move(graph), m_dialogs);
  Keep(window);
  return window;
}

void StudyWindows::ShowHistory(HistoryKind kind, Graph graph) {
  std::erase_if(m_followers, [](const Follower& follower) { return !follower.window; });
  m_followers.push_back({kind, Open(std::move(graph))});
}

void StudyWindows::ShowReport(std::unique_ptr<ReportFile> report, std::string_view caption) {
  Keep(new InfoBrowser(&m_frame, std::move(report), caption, m_dialogs));
}

void StudyWindows::Keep(wxFrame* window) {
  std::erase_if(m_windows, [](const wxWeakRef<wxFrame>& kept) { return !kept; });
  m_windows.emplace_back(window);
  window->Bind(wxEVT_CHAR_HOOK, &StudyWindows::OnKey, this);
  window->Show();
}

// Escape stops what is under way before it closes a window.
void StudyWindows::OnKey(wxKeyEvent& event) {
  const bool escape = event.GetKeyCode() == WXK_ESCAPE && !event.HasAnyModifiers();
  if (escape && m_desk.HasTask()) {
    m_desk.StopTask();
  } else {
    event.Skip();
  }
}

// Others write there, too, while the task goes on.
void StudyWindows::ShowProgress(std::string_view text) {
  const wxStatusBar* bar = m_frame.GetStatusBar();
  if (bar == nullptr) return;
  const wxString shown = bar->GetStatusText(kStatusField);
  if (shown != m_progress) m_status = shown;
  m_progress = Wide(text);
  if (shown != m_progress) m_frame.SetStatusText(m_progress, kStatusField);
}

void StudyWindows::PutBackStatus() {
  const wxStatusBar* bar = m_frame.GetStatusBar();
  if (bar == nullptr || m_progress.empty()) return;
  if (bar->GetStatusText(kStatusField) == m_progress) m_frame.SetStatusText(m_status, kStatusField);
  m_progress.clear();
}

void StudyWindows::TaskChanged() {
  EnableCommands();
  ShowHint();
  if (!m_desk.HasTask()) PutBackStatus();
  wxWakeUpIdle();
}

void StudyWindows::ShowHint() {
  if (m_frame.GetStatusBar() == nullptr) return;
  m_frame.SetStatusText(Wide(m_desk.hint()), kHintField);
}

// Items that are disabled give no hint of their own.
void StudyWindows::ShowObstacle(const wxMenu& menu) {
  m_desk.ForgetNotice();
  for (const wxMenuItem* item : menu.GetMenuItems()) {
    const std::string_view obstacle = m_desk.Obstacle(item->GetId());
    if (obstacle.empty()) continue;
    m_frame.SetStatusText(Wide(obstacle), kHintField);
    return;
  }
}

void StudyWindows::EnableCommands() {
  if (m_frame.GetMenuBar() == nullptr) return;
  for (wxMenuItem* item : ItemsOf(*m_frame.GetMenuBar())) {
    const int command = item->GetId();
    if (!StudyDesk::HasCommand(command)) continue;
    item->Enable(m_desk.IsAvailable(command));
    const std::string_view obstacle = m_desk.Obstacle(command);
    if (!obstacle.empty()) item->SetHelp(Wide(obstacle));
  }
}

void StudyWindows::FollowRun() {
  if (m_followers.empty() || m_follow_timer.IsRunning()) return;
  const int64_t wait = m_follow_at_ms - m_clock.NowMs();
  if (wait > 0) {
    m_follow_timer.StartOnce(static_cast<int>(wait));
  } else {
    BringUpToDate();
  }
}

void StudyWindows::BringUpToDate() {
  const int64_t begun = m_clock.NowMs();
  for (const Follower& follower : m_followers) {
    if (!follower.window) continue;
    if (std::optional<Graph> graph = m_desk.HistoryGraph(follower.kind)) {
      follower.window->Replace(std::move(*graph));
      // The time that drawing takes counts.
      follower.window->Update();
    }
  }
  const int64_t done = m_clock.NowMs();
  m_follow_at_ms = done + (kFollowShare - 1) * (done - begun);
}

}  // namespace tarn

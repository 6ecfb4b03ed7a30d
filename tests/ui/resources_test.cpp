#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/menu.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

namespace tarn {
namespace {

std::string Text(const wxString& text) {
  return text.utf8_string();
}

// A dialog or the client of a frame, loaded from the resources.
class Loaded {
 public:
  explicit Loaded(const std::string& name, const char* class_name = "wxDialog")
      : m_frame(new wxFrame(nullptr, wxID_ANY, "")),
        m_window(
            dynamic_cast<wxWindow*>(wxXmlResource::Get()->LoadObject(m_frame, name, class_name))) {}
  ~Loaded() { m_frame->Destroy(); }
  Loaded(const Loaded&) = delete;
  Loaded& operator=(const Loaded&) = delete;

  bool Exists() const { return m_window != nullptr; }
  std::string Title() const { return Text(m_window->GetLabel()); }
  // Null when there is none of that kind with that id.
  template <typename Control>
  Control* Find(int id) const {
    return dynamic_cast<Control*>(m_window->FindWindow(id));
  }
  bool HasText(const std::string& text) const { return HasText(m_window, text); }

 private:
  static bool HasText(const wxWindow* window, const std::string& text) {
    if (Text(window->GetLabel()) == text) return true;
    for (const wxWindow* child : window->GetChildren()) {
      if (HasText(child, text)) return true;
    }
    return false;
  }

  wxFrame* m_frame;  // destroys the other
  wxWindow* m_window;
};

struct Labelled {
  int id;
  const char* label;
};

template <typename Control>
void ExpectControls(const Loaded& window, const std::vector<Labelled>& controls) {
  for (const Labelled& expected : controls) {
    const Control* control = window.Find<Control>(expected.id);
    ASSERT_NE(control, nullptr) << expected.id << ' ' << expected.label;
    EXPECT_EQ(Text(control->GetLabel()), expected.label) << expected.id;
  }
}

void ExpectEdits(const Loaded& window, const std::vector<int>& ids) {
  for (const int id : ids) EXPECT_NE(window.Find<wxTextCtrl>(id), nullptr) << id;
}

void ExpectTexts(const Loaded& window, const std::vector<const char*>& texts) {
  for (const char* text : texts) EXPECT_TRUE(window.HasText(text)) << text;
}

TEST(Resources, HaveTheStartUpWindow) {
  const Loaded window("TARN", "wxPanel");
  ASSERT_TRUE(window.Exists());
  ExpectControls<wxButton>(window, {{101, "&New"},
                                    {103, "&Open..."},
                                    {105, "&Run..."},
                                    {108, "&Help"},
                                    {109, "&About"},
                                    {110, "E&xit"}});
  ExpectControls<wxRadioButton>(window, {{102, "Training Mode"}, {106, "Recall Mode"}});
  ExpectTexts(window, {"Select Network", "Run Network"});
}

TEST(Resources, HaveTheSingleValueEntry) {
  const Loaded window("DATAENT_DLG");
  ASSERT_TRUE(window.Exists());
  EXPECT_EQ(window.Title(), "Data Entry");
  ExpectEdits(window, {101});
  ExpectControls<wxStaticText>(window, {{102, "Enter Value:"}});
  ExpectControls<wxButton>(window, {{1, "OK"}, {2, "Cancel"}});
}

TEST(Resources, HaveTheStatusBoxWithoutAButton) {
  const Loaded window("STATUS_DLG");
  ASSERT_TRUE(window.Exists());
  EXPECT_EQ(window.Title(), "Network Load Status");
  ExpectControls<wxStaticText>(window, {{101, "Status"}});
  EXPECT_EQ(window.Find<wxButton>(1), nullptr);
}

TEST(Resources, HaveTheAboutBox) {
  const Loaded window("ABOUT_DLG");
  ASSERT_TRUE(window.Exists());
  EXPECT_EQ(window.Title(), "Tarn for Windows");
  EXPECT_TRUE(window.HasText("Tarn for Windows\nVersion 2.1\n32-bit Neural Network Modeling"));
  ExpectControls<wxButton>(window, {{1, "OK"}});
}

void ExpectStandardButtons(const Loaded& window, int help = 998) {
  ExpectControls<wxButton>(window, {{1, "OK"}, {2, "Cancel"}, {help, "&Help"}});
}

TEST(Resources, HaveTheTrainingSetup) {
  const Loaded window("TSETUP_DLG");
  ASSERT_TRUE(window.Exists());
  EXPECT_EQ(window.Title(), "Training Setup");
  ExpectControls<wxButton>(window, {{101, "&Network Design"},
                                    {102, "Training &Data"},
                                    {103, "Training &Parameters"},
                                    {104, "&Save Network Setup"}});
  ExpectStandardButtons(window);
}

TEST(Resources, HaveTheNetworkDesign) {
  const Loaded window("NDESIGN_DLG");
  ASSERT_TRUE(window.Exists());
  EXPECT_EQ(window.Title(), "Network Design");
  ExpectEdits(window, {148, 101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111});
  for (const int id : {113, 112, 114, 115, 116, 117, 118, 119, 120}) {
    ExpectControls<wxButton>(window, {{id, "Transfer Functions..."}});
  }
  for (int id = 139; id <= 147; ++id) ExpectControls<wxButton>(window, {{id, "Connections..."}});
  ExpectControls<wxButton>(window, {{149, "View Network"}});
  ExpectTexts(window,
              {"Network Name:", "Number of Network Layers:", "Number of Input Nodes:",
               "Hidden Layer 1 Nodes:", "Hidden Layer 8 Nodes:", "Number of Output Nodes:"});
  ExpectStandardButtons(window);
}

TEST(Resources, HaveTheTransferFunctions) {
  const Loaded window("TRANSFER_DLG");
  ASSERT_TRUE(window.Exists());
  EXPECT_EQ(window.Title(), "Transfer Functions");
  ExpectControls<wxRadioButton>(window, {{10, "Sigmoid (1/(1+exp(-x)))"},
                                         {11, "Gaussian (exp(-x*x))"},
                                         {12, "Hyperbolic Tangent (tanh(x))"},
                                         {13, "Hyperbolic Secant (sech(x))"}});
  ExpectStandardButtons(window, 9);
}

TEST(Resources, HaveTheTrainingParameters) {
  const Loaded window("TPARAM_DLG");
  ASSERT_TRUE(window.Exists());
  EXPECT_EQ(window.Title(), "Training Parameters");
  ExpectEdits(window, {101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 112});
  ExpectControls<wxCheckBox>(window, {{111, "Reset/Initialize Network Weights"}});
  ExpectTexts(window,
              {"Max Iterations:", "Learn Rate Control Start Iteration:", "AutoSave Rate:",
               "Screen Update Rate:", "Learn Rate (ETA):", "Learn Rate Minimum (Learn Control):",
               "Learn Rate Maximum (Learn Control):", "Momentum (ALPHA):", "FAST-Prop Coefficient:",
               "Training Patterns used per Weight Update:", "Tolerance:"});
  ExpectStandardButtons(window);
}

TEST(Resources, HaveTheTrainingData) {
  const Loaded window("TDATA_DLG");
  ASSERT_TRUE(window.Exists());
  EXPECT_EQ(window.Title(), "Training/Test Data");
  ExpectControls<wxButton>(window, {{101, "Input Node Data File"},
                                    {102, "Target Node Data File"},
                                    {115, "Tabulo"},
                                    {116, "Load Tabulo Info"}});
  ExpectControls<wxStaticText>(window,
                               {{113, "Input Node Data File: "}, {114, "Target Data File: "}});
  ExpectEdits(window, {111, 112, 107});
  ExpectControls<wxCheckBox>(window, {{109, "Normalize Inputs"}, {110, "Normalize Outputs"}});
  ExpectControls<wxRadioButton>(window,
                                {{103, "Random"}, {104, "Beginning"}, {105, "End"}, {106, "None"}});
  ExpectTexts(window, {"Data Start Column:", "Number of Test Cases:", "Inclusion Method"});
  ExpectStandardButtons(window);
}

TEST(Resources, HaveTheRecallData) {
  const Loaded window("RDATA_DLG");
  ASSERT_TRUE(window.Exists());
  EXPECT_EQ(window.Title(), "Recall Setup");
  ExpectControls<wxButton>(window, {{101, "Input Node Data FIle"},
                                    {102, "Target Data File"},
                                    {115, "Tabulo"},
                                    {103, "Load Tabulo Info"}});
  ExpectControls<wxStaticText>(window,
                               {{113, "Input Node Data File: "}, {114, "Target Data File: "}});
  ExpectEdits(window, {111, 112});
  ExpectTexts(window, {"Data Start Column:", "(Targets Optional for Recall Mode)"});
  ExpectStandardButtons(window);
}

TEST(Resources, HaveTheAutoSaveSelection) {
  const Loaded window("AUTOSAVE_DLG");
  ASSERT_TRUE(window.Exists());
  EXPECT_NE(window.Find<wxComboBox>(101), nullptr);
  ExpectStandardButtons(window);
}

TEST(Resources, HaveTheTrainingWindow) {
  const Loaded window("TRAIN_DLG", "wxPanel");
  ASSERT_TRUE(window.Exists());
  ExpectControls<wxButton>(window, {{215, "&Start"}, {216, "H&alt"}, {217, "Sto&p"}});
}

struct Item {
  int id;  // 0: a separator
  const char* label;
  const char* hint;
};

void ExpectMenu(const wxMenu& menu, const std::vector<Item>& items) {
  ASSERT_EQ(menu.GetMenuItemCount(), items.size());
  for (size_t i = 0; i < items.size(); ++i) {
    const wxMenuItem& item = *menu.FindItemByPosition(i);
    if (items[i].id == 0) {
      EXPECT_TRUE(item.IsSeparator());
      continue;
    }
    EXPECT_EQ(item.GetId(), items[i].id);
    EXPECT_EQ(Text(item.GetItemLabel().BeforeFirst('\t')), items[i].label);
    EXPECT_EQ(Text(item.GetHelp()), items[i].hint) << items[i].id;
  }
}

// The popup of that label, in its place.
const wxMenu& Popup(const wxMenuBar& bar, size_t place, const std::string& label) {
  EXPECT_EQ(Text(bar.GetMenuLabel(place)), label);
  return *bar.GetMenu(place);
}

class TrainingMenu : public testing::Test {
 protected:
  const std::unique_ptr<wxMenuBar> m_bar{wxXmlResource::Get()->LoadMenuBar("TRAIN_MENU")};
};

TEST_F(TrainingMenu, SavesAndLeaves) {
  ASSERT_NE(m_bar, nullptr);
  ASSERT_EQ(m_bar->GetMenuCount(), 6U);
  ExpectMenu(
      Popup(*m_bar, 0, "&File"),
      {{101, "&Save Network", "Save Tarn Network File"},
       {112, "Save &Network As...", "Save Tarn Network to a NEW Network File"},
       {102, "Save &Outputs/Targets...", ""},
       {103, "Save &Error History...", "Save the Training Run's Error Histories to an ASCII File"},
       {104, "Save &AutoSave Network...",
        "Save an AutoSave Stored Snapshot to a Tarn Network File"},
       {0, "", ""},
       {129, "&Restart Tarn", "Restart Tarn"},
       {130, "E&xit", "Exit Tarn"}});
}

TEST_F(TrainingMenu, SetsOptions) {
  ASSERT_NE(m_bar, nullptr);
  ExpectMenu(
      Popup(*m_bar, 1, "&Options"),
      {{105, "&Learn Rate Control", "Toggle Learn Rate Control On/Off"},
       {106, "Learn &Rate...", "Set the Learn Rate for Training (between 0. and 1.)"},
       {107, "Learn Rate &Min...",
        "Set the Minimum Learn Rate for Learn Rate Control (between 0. and 1.)"},
       {108, "Learn Rate Ma&x...",
        "Set the Maximum Learn Rate for Learn Rate Control (between 0. and 1.)"},
       {109, "M&omentum...", "Set the Momentum Factor for Training (between 0. and 1.)"},
       {110, "&FAST-Prop Coef...",
        "Set Fast-Prop Training Coefficient (between 0. - no Fast-Prop Training - and 3.)"},
       {142, "&Patterns per Weight Update...", ""},
       {111, "&Iterations...", "Set the Max Iterations for this Training Session"},
       {113, "&AutoSave Rate...", "Change the AutoSave Increment for Network Stores"},
       {114, "Screen &Update Rate...",
        "Change the Iteration Increment at which Training Status is Displayed"},
       {147, "&Tolerance...", "Set Tolerance Monitoring Value"},
       {115, "Initialize/Reset &Weights...", "Reset the Network to a Random Untrained State"}});
}

TEST_F(TrainingMenu, DrawsGraphs) {
  ASSERT_NE(m_bar, nullptr);
  ExpectMenu(
      Popup(*m_bar, 2, "&NetGraph"),
      {{116, "RMS &Error History vs Iteration...", "Graph the Training Error History"},
       {144, "&Correlation History vs Iteration...", "Graph the Correlation Coefficient History"},
       {148, "Toler&ance History vs Iteration...", "Graph the Train Set Tolerance History"},
       {121, "Test RMS Error &History vs Iteration...", "Graph the Test Set Error History"},
       {145, "Test Co&rrelation History vs Iteration...",
        "Graph the Test Correlation Coefficient History"},
       {149, "Test Tolerance History vs Iteration...", "Graph the Test Set Tolerance History"},
       {117, "&Learn Rate vs Iteration...", "Graph the Learn Rate History"},
       {118, "&Targets vs Net Outputs...", "Graph Targets vs Network Output Predictions"},
       {119, "Targets/&Outputs vs Pattern Sequence...",
        "Graph Targets and Network Outputs vs the Input Pattern Sequence"},
       {120, "Output Error vs &Pattern Sequence...",
        "Graph the Error (difference) between the Targets and Network Outputs vs the Input "
        "Pattern Sequence"},
       {122, "&Input Nodes vs Pattern Sequence...",
        "Graph the Inputs vs the Input Pattern Sequence"},
       {0, "", ""},
       {131, "I&nput Node Interrogator...",
        "Identify/Rank Importance of each Input (can take awhile)"},
       {146, "Color Conto&urs...", "Sensitivity of an output to two inputs - color contour graph"},
       {132, "Hidden No&de Analyzer...",
        "Identify Overall Connection Output Strengths for Hidden Nodes"}});
}

TEST_F(TrainingMenu, WritesReports) {
  ASSERT_NE(m_bar, nullptr);
  ExpectMenu(
      Popup(*m_bar, 3, "&Info"),
      {{133, "Network &Information...", "Display General Network Information"},
       {123, "&Network Outputs/Targets...", "Display Network Outputs and Targets"},
       {124, "&Weights and Deltas...", "Display Network Weights and Current Adjustment Deltas"},
       {125, "&Statistics...",
        "Display Statistical Comparison Between Targets and Network Outputs"},
       {126, "&Tolerance Checking...", "Count Cases that are within Tolerance"},
       {127, "T&hreshold Checking...",
        "Count Correct Predictions for Cases that Exceed Threshold (+/-)"},
       {128, "&Divergence Checking...", "Check if Network Appears Diverged"}});
}

TEST_F(TrainingMenu, StartsStopsAndHelps) {
  ASSERT_NE(m_bar, nullptr);
  ExpectMenu(Popup(*m_bar, 4, "&Training"),
             {{135, "&Start", "Start Network Training"}, {134, "S&top", "Stop Network Training"}});
  ExpectMenu(Popup(*m_bar, 5, "&Help"),
             {{24341, "&Help", "Tarn Help"}, {0, "", ""}, {24346, "&About...", "About"}});
}

TEST(Resources, HaveTheRecallWindow) {
  const Loaded window("RECALL_DLG", "wxPanel");
  ASSERT_TRUE(window.Exists());
  for (const int id : {101, 102, 104, 105, 106, 107, 108}) {
    EXPECT_NE(window.Find<wxStaticText>(id), nullptr) << id;
  }
  ExpectTexts(window, {"Network Definition", "Network Layers:", "Input Nodes:", "Output Nodes:",
                       "Hidden Nodes:", "Connections:", "Recall Patterns:"});
}

TEST(Resources, HaveTheRecallMenu) {
  const std::unique_ptr<wxMenuBar> bar(wxXmlResource::Get()->LoadMenuBar("RECALL_MENU"));
  ASSERT_NE(bar, nullptr);
  ASSERT_EQ(bar->GetMenuCount(), 4U);
  ExpectMenu(Popup(*bar, 0, "&File"),
             {{202, "Save &Outputs/Targets...", "Save Networks and Targets to an ASCII File"},
              {0, "", ""},
              {229, "&Restart Tarn", "Return to Tarn Startup Window"},
              {230, "E&xit", "Exit Tarn"}});
  ExpectMenu(Popup(*bar, 1, "&NetGraph"),
             {{218, "&Targets vs Net Outputs...",
               "Graph the Training Targets against the Network Outputs (scatter format)"},
              {219, "Targets/&Outputs vs Pattern Sequence...",
               "Graph the Targets and Network Outputs against the Input Sequence"},
              {220, "Output Error vs &Pattern Sequence...",
               "Graph the Error (Targets - Outputs) vs the Input Pattern Sequence"},
              {222, "&Input Nodes vs Pattern Sequence...",
               "Graph Input Node Data against the Input Pattern Sequence"}});
  ExpectMenu(
      Popup(*bar, 2, "&Info"),
      {{233, "Network &Information", "Display General Network Information"},
       {223, "&Network Outputs/Targets", "Display Network Outputs and Targets"},
       {225, "&Statistics", "Display Statistical Comparison Between Targets and Network Outputs"},
       {226, "&Tolerance Checking", "Count Cases that are within Tolerance"},
       {227, "T&hreshold Checking",
        "Count Correct Predictions for Cases that Exceed Threshold (+/-)"}});
  ExpectMenu(Popup(*bar, 3, "&Help"),
             {{24341, "&Help", "Tarn Help"}, {0, "", ""}, {24346, "&About...", "About"}});
}

}  // namespace
}  // namespace tarn

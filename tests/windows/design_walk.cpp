#include <array>
#include <fmt/format.h>
#include <string>

#include "windows/picture.h"
#include "windows/place.h"
#include "windows/roads.h"

namespace tarn {
namespace {

constexpr int kHelp = 998;
constexpr std::string_view kDesignCaption = "Network Design";
constexpr std::string_view kDesignError = "Network Design Error";
constexpr std::string_view kTransferCaption = "Transfer Functions";

// Of the layers that receive: hidden 1 to 8, and the output layer.
constexpr std::array kTransferButtons = {113, 112, 114, 115, 116, 117, 118, 119, 120};
constexpr std::array kConnectionsButtons = {139, 140, 141, 142, 143, 144, 145, 146, 147};
constexpr int kFirstFunction = 10;
constexpr int kFunctions = 4;

Place OpenTransfer(const Place& design, int button) {
  return {design.driver(), design.Opens(button, kTransferCaption), "TRANSFER_DLG"};
}

// Of hidden layers 2 to 8.
constexpr int kFirstNodes = 104;
constexpr int kLastNodes = 110;

std::string NodesIn(int edit) {
  return std::to_string(edit - 102);
}

void FillDesign(const Place& design) {
  design.Type(148, "Driven");
  design.Type(101, "10");
  design.Type(102, "4");
  design.Type(103, "8");
  for (int edit = kFirstNodes; edit <= kLastNodes; ++edit) design.Type(edit, NodesIn(edit));
  design.Type(111, "3");
}

void WalkTransfer(const Place& design) {
  const Place first = OpenTransfer(design, kTransferButtons[0]);
  for (const int radio : {11, 12, 13, 10}) first.Check(radio);
  first.Helps(9);
  first.Check(12);
  first.Closes(IDCANCEL);
  const Place unchanged = OpenTransfer(design, kTransferButtons[0]);
  design.driver().Expect(unchanged.IsChecked(10), "a choice that is cancelled is none");
  unchanged.Closes(IDCANCEL);
  for (size_t layer = 0; layer < kTransferButtons.size(); ++layer) {
    const int radio = kFirstFunction + static_cast<int>(layer + 1) % kFunctions;
    const Place chosen = OpenTransfer(design, kTransferButtons[layer]);
    chosen.Check(radio);
    chosen.Closes(IDOK);
    const Place again = OpenTransfer(design, kTransferButtons[layer]);
    design.driver().Expect(again.IsChecked(radio),
                           fmt::format("layer {} keeps its function", layer + 1));
    again.Closes(IDCANCEL);
  }
}

Place OpenConnections(const Place& design, size_t place) {
  const std::string caption =
      fmt::format("Connection Editor: From Layer {} to Layer {}", place + 1, place + 2);
  return {design.driver(), design.Opens(kConnectionsButtons[place], caption), "TCONNECT_DLG"};
}

void WalkConnections(const Place& design) {
  Driver& driver = design.driver();
  const Place editor = OpenConnections(design, 0);
  driver.Expect(editor.ItemCount(101) == 32, "4 x 8 connections are there");
  editor.Select(101, {0, 2});
  editor.Does(103, "two of them are removed",
              [&] { return editor.ItemCount(101) == 30 && editor.ItemCount(102) == 2; });
  editor.Select(102, {0});
  editor.Does(104, "one is put back",
              [&] { return editor.ItemCount(101) == 31 && editor.ItemCount(102) == 1; });
  editor.Helps(kHelp);
  editor.Closes(IDOK);
  const Place again = OpenConnections(design, 0);
  driver.Expect(again.ItemCount(102) == 1, "the other stays removed");
  again.Closes(IDCANCEL);
  for (size_t place = 1; place < kConnectionsButtons.size(); ++place) {
    OpenConnections(design, place).Closes(IDCANCEL);
  }
}

void WalkView(const Place& design) {
  const Place view(design.driver(), design.Opens(149, kDesignCaption), "VIEW_MENU");
  const Window page = PanelOf(view.window());
  design.driver().ExpectSoon("the inputs are named", [&] { return HasInkAtTop(PictureOf(page)); });
  view.Closes(101);
}

// All the layers that there can be.
void KeepDesign(const Place& setup) {
  Driver& driver = setup.driver();
  const Place design(driver, setup.Opens(101, kDesignCaption), "NDESIGN_DLG");
  FillDesign(design);
  WalkTransfer(design);
  WalkConnections(design);
  WalkView(design);
  design.Helps(kHelp);
  design.Closes(IDOK);
  const Place again(driver, setup.Opens(101, kDesignCaption), "NDESIGN_DLG");
  driver.Expect(again.Read(148) == "Driven" && again.Read(101) == "10" && again.Read(102) == "4" &&
                    again.Read(103) == "8" && again.Read(111) == "3",
                "the design is kept");
  for (int edit = kFirstNodes; edit <= kLastNodes; ++edit) {
    driver.Expect(again.Read(edit) == NodesIn(edit), fmt::format("the nodes of {} are kept", edit));
  }
  again.Closes(IDCANCEL);
}

// A design that the training data fit.
void MakeItSmall(const Place& setup) {
  Driver& driver = setup.driver();
  const Place design(driver, setup.Opens(101, kDesignCaption), "NDESIGN_DLG");
  design.Type(101, "2");
  design.Tells(IDOK, kDesignError, "Set number of network layers between 3 and 10");
  design.Type(101, "3");
  design.Tells(kConnectionsButtons[4], "Error", "Insufficient layers for this option");
  design.Closes(IDOK);
}

void CancelDesign(const Place& setup) {
  Driver& driver = setup.driver();
  const Place other(driver, setup.Opens(101, kDesignCaption), "NDESIGN_DLG");
  other.Type(148, "Other");
  other.Closes(IDCANCEL);
  const Place again(driver, setup.Opens(101, kDesignCaption), "NDESIGN_DLG");
  driver.Expect(again.Read(148) == "Driven" && again.Read(101) == "3", "the design is kept");
  for (int edit = kFirstNodes; edit <= kLastNodes; ++edit) {
    driver.Expect(again.Read(edit).empty(), fmt::format("no layer is left for {}", edit));
  }
  again.Closes(IDOK);
}

}  // namespace

void WalkDesign(Driver& driver, const Window& window) {
  const Place setup(driver, window, "TSETUP_DLG");
  KeepDesign(setup);
  MakeItSmall(setup);
  CancelDesign(setup);
}

}  // namespace tarn

#include "windows/place.h"

#include <commctrl.h>
#include <fmt/format.h>

#include "base/wide_text.h"
#include "windows/boxes.h"
#include "windows/controls.h"
#include "windows/files.h"
#include "windows/picture.h"

namespace tarn {

Place::Place(Driver& driver, const Window& window, std::string_view table)
    : m_driver(driver), m_window(window), m_caption(window.Caption()), m_table(TableOf(table)) {}

Window Place::Control(int id) const {
  const Kind kind = EntryOf(m_table, id).kind;
  Window control;
  const bool found = m_driver.Until([&] {
    control = m_window.Child(id, [kind](const Window& child) { return IsOfKind(child, kind); });
    return control.Exists();
  });
  if (!found) throw Lost(fmt::format("no {} {} in {}", NameOf(kind), id, m_table.name));
  m_driver.log().CountFound(m_table, id);
  return control;
}

bool Place::IsCommand(int id) const {
  return EntryOf(m_table, id).kind == Kind::kCommand;
}

void Place::Count(int id, std::string_view effect) const {
  m_driver.log().CountActed(m_table, id);
  if (IsCommand(id)) {
    m_driver.log().Command(m_table, id, effect);
  } else {
    m_driver.log().Acted(m_caption, EntryOf(m_table, id), effect);
  }
}

std::string Place::ValueOf(int id) const {
  const Window control = Control(id);
  const bool gauge = EntryOf(m_table, id).kind == Kind::kGauge;
  return gauge ? fmt::format("{}", control.Send(PBM_GETPOS)) : control.Text();
}

std::string Place::Read(int id) const {
  std::string text = ValueOf(id);
  m_driver.log().Found(m_caption, EntryOf(m_table, id), text);
  return text;
}

void Place::Shows(int id, std::string_view text) const {
  Shows(id, fmt::format("\"{}\"", text),
        [text](const std::string& shown) { return shown == text; });
}

void Place::Shows(int id, std::string_view what,
                  const std::function<bool(const std::string&)>& is) const {
  std::string shown;
  const bool right = m_driver.Until([&] { return is(shown = ValueOf(id)); });
  m_driver.log().Found(m_caption, EntryOf(m_table, id), shown);
  m_driver.Expect(right, fmt::format("{} {} shows {}", m_table.name, id, what));
  if (right) Count(id, fmt::format("shows \"{}\"", shown));
}

void Place::ShowsPicture(int id) const {
  const Window control = Control(id);
  const bool drawn = m_driver.Until([&] { return HasColours(PictureOf(control)); });
  m_driver.Expect(drawn, fmt::format("{} {} shows a picture", m_table.name, id));
  if (drawn) Count(id, "shows a picture");
}

bool Place::IsChecked(int id) const {
  return Control(id).Send(BM_GETCHECK) == BST_CHECKED;
}

void Place::Type(int id, std::string_view text) const {
  const std::string before = Read(id);
  const Window edit = Control(id);
  edit.SetText(text);
  const std::string now = edit.Text();
  m_driver.Expect(edit.IsEnabled() && now == text,
                  fmt::format("{} {} takes \"{}\"", m_table.name, id, text));
  if (before != now) Count(id, fmt::format("typed \"{}\", reads \"{}\"", text, now));
}

void Place::Toggle(int id) const {
  const bool before = IsChecked(id);
  Control(id).Send(BM_CLICK);
  const bool now = IsChecked(id);
  m_driver.Expect(before != now, fmt::format("{} {} is toggled", m_table.name, id));
  if (before != now) Count(id, now ? "is checked" : "is not checked");
}

void Place::Check(int id) const {
  const bool before = IsChecked(id);
  Control(id).Send(BM_CLICK);
  const bool now = IsChecked(id);
  m_driver.Expect(now, fmt::format("{} {} is checked", m_table.name, id));
  if (now && !before) Count(id, "is checked");
}

LRESULT Place::ItemCount(int id) const {
  const bool list = EntryOf(m_table, id).kind == Kind::kList;
  return Control(id).Send(list ? LB_GETCOUNT : CB_GETCOUNT);
}

void Place::Select(int id, std::initializer_list<int> items) const {
  const Window list = Control(id);
  list.Send(LB_SETSEL, FALSE, -1);
  for (const int item : items) list.Send(LB_SETSEL, TRUE, item);
  list.Notify(LBN_SELCHANGE);
  const auto wanted = static_cast<LRESULT>(items.size());
  const LRESULT selected = list.Send(LB_GETSELCOUNT);
  m_driver.Expect(selected == wanted,
                  fmt::format("{} {} has {} selected", m_table.name, id, wanted));
  if (selected == wanted) {
    Count(id, fmt::format("of {} items {} are selected", ItemCount(id), selected));
  }
}

void Place::Pick(int id, int item) const {
  const Window combo = Control(id);
  const auto place = static_cast<WPARAM>(item);
  std::wstring wide(static_cast<size_t>(combo.Send(CB_GETLBTEXTLEN, place)) + 1, L'\0');
  wide.resize(static_cast<size_t>(combo.Send(CB_GETLBTEXT, place, Pointer(wide.data()))));
  const std::string text = Narrow(wide);
  const std::string before = Read(id);
  combo.Send(CB_SETCURSEL, place);
  combo.Notify(CBN_SELCHANGE);
  const std::string now = combo.Text();
  m_driver.Expect(now == text, fmt::format("{} {} shows \"{}\"", m_table.name, id, text));
  if (before != now) Count(id, fmt::format("picked, reads \"{}\"", now));
}

void Place::Begin(int id) const {
  if (IsCommand(id)) {
    m_window.Post(WM_COMMAND, static_cast<WPARAM>(id));
    return;
  }
  const Window button = Control(id);
  m_driver.Expect(button.IsShown() && button.IsEnabled(),
                  fmt::format("{} {} can be pressed", m_table.name, id));
  button.Post(BM_CLICK);
}

Window Place::Opens(int id, std::string_view caption) const {
  Begin(id);
  const Window window = m_driver.Await(caption);
  Count(id, fmt::format("-> window \"{}\"", caption));
  return window;
}

void Place::Tells(int id, std::string_view caption, std::string_view text, int answer) const {
  Answer(m_driver, Opens(id, caption), text, answer);
}

void Place::Closes(int id) const {
  Begin(id);
  m_driver.AwaitEndOf(m_window);
  Count(id, fmt::format("-> \"{}\" closes", m_caption));
}

void Place::Ends(int id) const {
  Begin(id);
  m_driver.AwaitEndOfProgram();
  Count(id, "-> the program ends");
}

void Place::Saves(int id, std::string_view title, std::string_view path) const {
  const std::string file(path);
  RemoveFile(file);
  const Window dialog = Opens(id, title);
  ChooseFile(m_driver, dialog, path);
  m_driver.AwaitEndOf(dialog);
  m_driver.ExpectSoon(fmt::format("{} is written", path), [&] { return !ReadWhole(file).empty(); });
}

void Place::Helps(int id) const {
  Begin(id);
  const Window help = m_driver.AwaitAny();
  const std::string caption = help.Caption();
  const bool right = caption.starts_with("Tarn Help: ");
  m_driver.Expect(right, fmt::format("help: \"{}\"", caption));
  if (right) Count(id, fmt::format("-> \"{}\"", caption));
  Dismiss(m_driver, help);
}

void Place::Does(int id, std::string_view what, const std::function<bool()>& seen) const {
  Begin(id);
  const bool done = m_driver.Until(seen);
  // What is seen may come before the program is done with it.
  m_window.Send(WM_NULL);
  m_driver.Expect(done, fmt::format("{} {}: {}", m_table.name, id, what));
  if (done) Count(id, fmt::format("-> {}", what));
}

}  // namespace tarn

#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

#include "windows/driver.h"
#include "windows/tables.h"
#include "windows/window.h"

namespace tarn {

// A window whose numbers stand in a table: each act counts only when its effect was seen.
class Place {
 public:
  Place(Driver& driver, const Window& window, std::string_view table);

  const Window& window() const { return m_window; }
  Driver& driver() const { return m_driver; }

  // Nothing that counts.
  std::string Read(int id) const;
  // What one can only look at counts when it is as it should be.
  void Shows(int id, std::string_view text) const;
  void Shows(int id, std::string_view what,
             const std::function<bool(const std::string&)>& is) const;
  void ShowsPicture(int id) const;
  bool IsChecked(int id) const;
  // Both see the change.
  void Type(int id, std::string_view text) const;
  void Toggle(int id) const;
  // Sees that it is checked; that it was not before makes it count.
  void Check(int id) const;
  // Items of a list by their places.
  LRESULT ItemCount(int id) const;
  void Select(int id, std::initializer_list<int> items) const;
  // Picks an item of a combo box by its place.
  void Pick(int id, int item) const;

  // A button is pressed, or a command is sent, and:
  // a window comes;
  Window Opens(int id, std::string_view caption) const;
  // a message is told, or a question is asked, and answered;
  void Tells(int id, std::string_view caption, std::string_view text, int answer = IDOK) const;
  // this window closes;
  void Closes(int id) const;
  // the program ends;
  void Ends(int id) const;
  // a file is written that is chosen in a dialog;
  void Saves(int id, std::string_view title, std::string_view path) const;
  // what comes is that the folder has no help file;
  void Helps(int id) const;
  // something else is seen.
  void Does(int id, std::string_view what, const std::function<bool()>& seen) const;
  // A button is pressed, or a command is sent; what follows is seen by others.
  void Begin(int id) const;
  void Count(int id, std::string_view effect) const;

 private:
  // Of the kind that the table tells. Throws Lost when there is none.
  Window Control(int id) const;
  std::string ValueOf(int id) const;
  bool IsCommand(int id) const;

  Driver& m_driver;
  Window m_window;
  std::string m_caption;  // when it came
  const Table& m_table;
};

}  // namespace tarn

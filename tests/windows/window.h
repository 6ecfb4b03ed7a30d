#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>
#include <windows.h>

namespace tarn {

// The program does not do what the road needs to go on.
class Lost : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A window or a control of another process, reached by messages alone.
class Window {
 public:
  Window() = default;
  explicit Window(HWND handle) : m_handle(handle) {}

  HWND handle() const { return m_handle; }
  bool Exists() const { return ::IsWindow(m_handle) != 0; }
  bool IsShown() const { return ::IsWindowVisible(m_handle) != 0; }
  bool IsEnabled() const { return ::IsWindowEnabled(m_handle) != 0; }
  int Number() const { return ::GetDlgCtrlID(m_handle); }
  std::string Class() const;
  bool IsDialog() const { return Class() == "#32770"; }
  // On the screen.
  RECT Place() const;

  // Of one with a title; asks the window nothing.
  std::string Caption() const;
  // The caption, or what a control holds.
  std::string Text() const;
  void SetText(std::string_view text) const;
  // Tells the window around a control what has happened to it, as the control itself would.
  void Notify(int code) const;

  // At any depth.
  std::vector<Window> Children() const;
  // Does not exist when there is none of that number.
  Window Child(int number) const;
  // The same among those that are so.
  Window Child(int number, const std::function<bool(const Window&)>& is) const;
  // The first one of that class.
  Window ChildOfClass(std::string_view name) const;

  // 0 from a window that is gone; throws Lost when there is no answer in time.
  LRESULT Send(UINT message, WPARAM first = 0, LPARAM second = 0) const;
  void Post(UINT message, WPARAM first = 0, LPARAM second = 0) const;

  friend bool operator==(const Window&, const Window&) = default;

 private:
  HWND m_handle = nullptr;
};

// The windows on the screen that belong to a process.
std::vector<Window> WindowsOf(DWORD process);

// The part of a graph, a report or a view that is painted. Throws Lost.
Window PanelOf(const Window& window);

// A message parameter of two halves.
LPARAM Halves(int low, int high);
LPARAM Pointer(const void* address);

}  // namespace tarn

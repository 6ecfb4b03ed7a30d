#include "windows/window.h"

#include <array>
#include <fmt/format.h>

#include "base/wide_text.h"

namespace tarn {
namespace {

constexpr UINT kPatienceMs = 20'000;

using Windows = std::vector<Window>;

BOOL CALLBACK Collect(HWND handle, LPARAM windows) {
  reinterpret_cast<Windows*>(windows)->emplace_back(handle);
  return TRUE;
}

}  // namespace

LPARAM Halves(int low, int high) {
  return static_cast<LPARAM>((static_cast<DWORD>(high) << 16U) |
                             (static_cast<DWORD>(low) & 0xFFFFU));
}

LPARAM Pointer(const void* address) {
  return reinterpret_cast<LPARAM>(address);
}

std::string Window::Class() const {
  std::array<wchar_t, 256> name{};
  const int length = ::GetClassNameW(m_handle, name.data(), static_cast<int>(name.size()));
  return Narrow({name.data(), static_cast<size_t>(length)});
}

RECT Window::Place() const {
  RECT place{};
  ::GetWindowRect(m_handle, &place);
  return place;
}

std::string Window::Caption() const {
  std::array<wchar_t, 512> caption{};
  const int length = ::GetWindowTextW(m_handle, caption.data(), static_cast<int>(caption.size()));
  return Narrow({caption.data(), static_cast<size_t>(length)});
}

std::string Window::Text() const {
  const auto length = static_cast<size_t>(Send(WM_GETTEXTLENGTH));
  std::wstring text(length + 1, L'\0');
  const LRESULT copied = Send(WM_GETTEXT, text.size(), Pointer(text.data()));
  text.resize(static_cast<size_t>(copied));
  return Narrow(text);
}

void Window::SetText(std::string_view text) const {
  const std::wstring wide = Widen(text);
  Send(WM_SETTEXT, 0, Pointer(wide.c_str()));
}

void Window::Notify(int code) const {
  const Window parent(::GetParent(m_handle));
  parent.Send(WM_COMMAND, static_cast<WPARAM>(Halves(Number(), code)), Pointer(m_handle));
}

std::vector<Window> Window::Children() const {
  Windows children;
  ::EnumChildWindows(m_handle, Collect, Pointer(&children));
  return children;
}

Window Window::Child(int number) const {
  return Child(number, [](const Window&) { return true; });
}

Window Window::Child(int number, const std::function<bool(const Window&)>& is) const {
  for (const Window& child : Children()) {
    if (child.Number() == number && is(child)) return child;
  }
  return {};
}

Window Window::ChildOfClass(std::string_view name) const {
  for (const Window& child : Children()) {
    if (child.Class() == name) return child;
  }
  return {};
}

LRESULT Window::Send(UINT message, WPARAM first, LPARAM second) const {
  DWORD_PTR result = 0;
  const LRESULT answered =
      ::SendMessageTimeoutW(m_handle, message, first, second, SMTO_NORMAL, kPatienceMs, &result);
  if (answered == 0 && Exists())
    throw Lost(fmt::format("a window does not answer message {:#x}", message));
  return static_cast<LRESULT>(result);
}

void Window::Post(UINT message, WPARAM first, LPARAM second) const {
  ::PostMessageW(m_handle, message, first, second);
}

std::vector<Window> WindowsOf(DWORD process) {
  Windows all;
  ::EnumWindows(Collect, Pointer(&all));
  std::erase_if(all, [process](const Window& window) {
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window.handle(), &owner);
    return owner != process || !window.IsShown();
  });
  return all;
}

Window PanelOf(const Window& window) {
  for (const Window& child : window.Children()) {
    if (child.Class().starts_with("wxWindow")) return child;
  }
  throw Lost("nothing is painted in the window");
}

}  // namespace tarn

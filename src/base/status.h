#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarn {

// What a step that can fail returns: success, or the text that the user is shown. The core
// never prints it; each front end shows it in its own way.
class [[nodiscard]] Status {
 public:
  Status() = default;
  static Status Failure(std::string_view message) { return Status(std::string(message)); }

  bool ok() const { return m_ok; }
  // The user's message; empty on success.
  const std::string& message() const { return m_message; }

 private:
  explicit Status(std::string message) : m_message(std::move(message)), m_ok(false) {}

  std::string m_message;
  bool m_ok = true;
};

// Texts about fallbacks that let the work go on, in the order in which they arose.
using Notices = std::vector<std::string>;

// One message box: the core fills it, a front end shows it.
enum class MessageIcon { kNone, kExclamation, kQuestion };

struct Message {
  std::string caption;
  std::string text;
  MessageIcon icon = MessageIcon::kExclamation;
};

// An allocation that cannot be made is answered with this text everywhere.
inline constexpr std::string_view kOutOfMemory = "Tarn has run out of memory!";

}  // namespace tarn

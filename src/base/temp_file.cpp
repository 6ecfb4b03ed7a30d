#include "base/temp_file.h"

#include <algorithm>
#include <cstring>
#include <random>
#include <string_view>

#include "base/paths.h"
#include "base/process.h"

namespace tarn {
namespace {

constexpr int kTries = 100;

// A name is kPrefix, the number of the process, "-" and so many letters.
constexpr const char* kPrefix = "Tarn";
constexpr std::string_view kLetters = "0123456789abcdefghijklmnopqrstuvwxyz";
constexpr size_t kLetterCount = 6;

}  // namespace

std::string FreshTemporaryName() {
  std::random_device random;
  std::string name = std::string(kPrefix) + ProcessName() + "-";
  for (size_t i = 0; i < kLetterCount; ++i) name.push_back(kLetters[random() % kLetters.size()]);
  return name;
}

bool IsAbandonedName(std::string_view name) {
  if (!name.starts_with(kPrefix)) return false;
  name.remove_prefix(std::strlen(kPrefix));
  const size_t dash = name.find('-');
  if (dash == 0 || dash == std::string_view::npos) return false;
  const std::string_view process = name.substr(0, dash);
  const std::string_view letters = name.substr(dash + 1);
  if (process.find_first_not_of("0123456789") != std::string_view::npos) return false;
  if (letters.size() != kLetterCount) return false;
  if (letters.find_first_not_of(kLetters) != std::string_view::npos) return false;
  return process == ProcessName() || !IsLiveProcess(process);
}

void RemoveAbandonedFiles(const std::string& folder, const std::vector<std::string>& kept) {
  for (const std::string& name : Files().NamesIn(folder)) {
    if (!IsAbandonedName(name)) continue;
    const std::string path = JoinPath(folder, name);
    if (std::ranges::find(kept, path) != kept.end()) continue;
    if (Files().IsDirectory(path)) {
      Files().RemoveFolder(path);
    } else {
      Files().Remove(path);
    }
  }
}

bool TempFile::Create(const std::string& folder, FileLayer::Lifetime lifetime) {
  Remove();
  m_path = Files().MakeTemporary(folder, kPrefix, lifetime);
  for (int i = 0; i < kTries && m_path.empty(); ++i) {
    const std::string path = JoinPath(folder, FreshTemporaryName());
    const FileLayer::Handle file = Files().Open(path, FileLayer::Mode::kCreateNew);
    if (file == FileLayer::kNoFile) continue;
    Files().Close(file);
    m_path = path;
  }
  return !m_path.empty();
}

void TempFile::Remove() {
  if (!m_path.empty()) Files().Remove(m_path);
  m_path.clear();
}

ScratchFolder::ScratchFolder() : m_path(TemporaryFolder()) {
  const std::string parent = m_path;
  for (int i = 0; i < kTries && !m_owned; ++i) {
    const std::string path = JoinPath(parent, FreshTemporaryName());
    if (!Files().MakeFolder(path)) continue;
    m_path = path;
    m_owned = true;
  }
}

void ScratchFolder::Remove() {
  if (m_owned) Files().RemoveFolder(m_path);
  m_owned = false;
}

}  // namespace tarn

#include "base/temp_file.h"

#include <random>
#include <string_view>

#include "base/file_layer.h"
#include "base/paths.h"
#include "base/process.h"

namespace tarn {
namespace {

constexpr int kTries = 100;

// A name that nobody has yet, with high probability; exclusive creation settles the rest.
std::string FreshName() {
  static constexpr std::string_view kLetters = "0123456789abcdefghijklmnopqrstuvwxyz";
  std::random_device random;
  std::string name = "Tarn" + ProcessName() + "-";
  for (int i = 0; i < 6; ++i) name.push_back(kLetters[random() % kLetters.size()]);
  return name;
}

}  // namespace

bool TempFile::Create(const std::string& folder) {
  Remove();
  for (int i = 0; i < kTries; ++i) {
    const std::string path = JoinPath(folder, FreshName());
    const FileLayer::Handle file = Files().Open(path, FileLayer::Mode::kCreateNew);
    if (file == FileLayer::kNoFile) continue;
    Files().Close(file);
    m_path = path;
    return true;
  }
  return false;
}

void TempFile::Remove() {
  if (!m_path.empty()) Files().Remove(m_path);
  m_path.clear();
}

ScratchFolder::ScratchFolder() : m_path(TemporaryFolder()) {
  const std::string parent = m_path;
  for (int i = 0; i < kTries && !m_owned; ++i) {
    const std::string path = JoinPath(parent, FreshName());
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

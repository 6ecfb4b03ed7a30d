#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/file_layer.h"

namespace tarn {

// A temporary file of the program's own: a fresh, empty file with the prefix "Tarn" in a folder,
// readable by the user alone where files have modes, removed with the object. Windows takes three
// letters of the prefix, and removes the file by itself when the program is killed; what a power
// cut leaves there cannot be told from files of others and stays.
class TempFile {
 public:
  TempFile() = default;
  ~TempFile() { Remove(); }
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  // False when the folder takes no new file.
  bool Create(const std::string& folder,
              FileLayer::Lifetime lifetime = FileLayer::Lifetime::kProcess);
  void Remove();
  // It stays behind, for the next start of the program.
  void Release() { m_path.clear(); }
  // Empty until Create has succeeded.
  const std::string& path() const { return m_path; }

 private:
  std::string m_path;
};

// "Tarn", the number of this process, "-" and six letters: a name that nobody has yet, with high
// probability; exclusive creation settles the rest.
std::string FreshTemporaryName();
// Whether it is such a name, of a process that has ended. One that had the number of this process
// has ended, too, as long as this one has made no such file.
bool IsAbandonedName(std::string_view name);

// Removes the temporary files and scratch folders in `folder` that no live process owns: those
// of a program that was killed. Those whose paths are in `kept` stay. To be called before this
// process makes any of its own.
void RemoveAbandonedFiles(const std::string& folder, const std::vector<std::string>& kept = {});

// A folder for scratch files with fixed names, private to this process and removed with all
// that it holds: two programs at work at once never meet in it. Falls back to the system's
// temporary folder itself, which is not removed, when none can be made.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder() { Remove(); }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  // Removes it before its time.
  void Remove();
  const std::string& path() const { return m_path; }

 private:
  std::string m_path;
  bool m_owned = false;
};

}  // namespace tarn

#include "support/faulty_files.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

namespace tarn {

void FaultyFiles::FailAt(int64_t k, Fault fault, Kinds kinds) {
  m_k = k;
  m_fault = fault;
  m_kinds = kinds;
  m_count = 0;
  m_failed.clear();
  m_half_taken = false;
}

bool FaultyFiles::Strikes(Kinds kind, Need need, std::string_view what, const std::string& path) {
  if (m_kinds == Kinds::kAll || kind == Kinds::kMutating) ++m_count;
  if (m_k == 0 || m_count < m_k) return false;
  const bool counted = m_kinds == Kinds::kAll || kind == Kinds::kMutating;
  const bool fails = m_fault == Fault::kOnce ? counted && m_count == m_k : need == Need::kSpace;
  if (fails) m_failed.push_back(std::string(what) + path);
  return fails;
}

bool FaultyFiles::Exists(const std::string& path) {
  if (m_under.IsSpecial(path)) return true;
  const Handle file = m_under.Open(path, Mode::kRead);
  return file != kNoFile && m_under.Close(file);
}

FileLayer::Handle FaultyFiles::Open(const std::string& path, Mode mode) {
  const Kinds kind = mode == Mode::kRead ? Kinds::kAll : Kinds::kMutating;
  const bool makes = mode != Mode::kRead && !Exists(path);
  const bool short_write = m_fault == Fault::kShortWrite && !m_half_taken;
  const Need need = makes && !short_write ? Need::kSpace : Need::kNothing;
  return Strikes(kind, need, mode == Mode::kRead ? "read-open " : "open ", path)
             ? kNoFile
             : m_under.Open(path, mode);
}

int64_t FaultyFiles::Read(Handle file, void* data, size_t size) {
  return Strikes(Kinds::kAll, Need::kNothing, "read") ? -1 : m_under.Read(file, data, size);
}

int64_t FaultyFiles::Write(Handle file, const void* data, size_t size) {
  if (!Strikes(Kinds::kMutating, Need::kSpace, "write")) return m_under.Write(file, data, size);
  if (m_fault != Fault::kShortWrite || m_half_taken) return -1;
  m_half_taken = true;
  return m_under.Write(file, data, size / 2);
}

bool FaultyFiles::Seek(Handle file, int64_t position) {
  return !Strikes(Kinds::kAll, Need::kNothing, "seek") && m_under.Seek(file, position);
}

int64_t FaultyFiles::Size(Handle file) {
  return Strikes(Kinds::kAll, Need::kNothing, "size") ? -1 : m_under.Size(file);
}

bool FaultyFiles::Truncate(Handle file, int64_t size) {
  return !Strikes(Kinds::kMutating, Need::kNothing, "truncate") && m_under.Truncate(file, size);
}

bool FaultyFiles::Sync(Handle file) {
  const bool short_write = m_fault == Fault::kShortWrite && !m_half_taken;
  const Need need = short_write ? Need::kNothing : Need::kSpace;
  return !Strikes(Kinds::kMutating, need, "sync") && m_under.Sync(file);
}

bool FaultyFiles::Close(Handle file) {
  const bool strikes = Strikes(Kinds::kMutating, Need::kNothing, "close");
  return m_under.Close(file) && !strikes;
}

bool FaultyFiles::Rename(const std::string& from, const std::string& to) {
  return !Strikes(Kinds::kMutating, Need::kNothing, "rename ", to) && m_under.Rename(from, to);
}

bool FaultyFiles::Remove(const std::string& path) {
  return !Strikes(Kinds::kMutating, Need::kNothing, "remove ", path) && m_under.Remove(path);
}

bool FaultyFiles::CopyMode(const std::string& from, const std::string& to) {
  return !Strikes(Kinds::kAll, Need::kNothing, "mode ", to) && m_under.CopyMode(from, to);
}

bool FaultyFiles::GiveDefaultMode(const std::string& path) {
  return !Strikes(Kinds::kAll, Need::kNothing, "mode ", path) && m_under.GiveDefaultMode(path);
}

bool FaultyFiles::EnterDirectory(const std::string& path) {
  return !Strikes(Kinds::kAll, Need::kNothing, "enter ", path) && m_under.EnterDirectory(path);
}

bool FaultyFiles::MakeFolder(const std::string& path) {
  return !Strikes(Kinds::kAll, Need::kSpace, "folder ", path) && m_under.MakeFolder(path);
}

bool FaultyFiles::RemoveFolder(const std::string& path) {
  return !Strikes(Kinds::kAll, Need::kNothing, "remove ", path) && m_under.RemoveFolder(path);
}

std::string FaultyFiles::MakeTemporary(const std::string& folder, const char* prefix,
                                       Lifetime lifetime) {
  const bool strikes = Strikes(Kinds::kMutating, Need::kSpace, "temporary ", folder);
  return strikes ? std::string() : m_under.MakeTemporary(folder, prefix, lifetime);
}

bool FaultyFiles::IsWriteProtected(const std::string& path) {
  return m_under.IsWriteProtected(path);
}

std::string FaultyFiles::ResolveLinks(const std::string& path) {
  return m_under.ResolveLinks(path);
}

bool FaultyFiles::IsSpecial(const std::string& path) {
  return m_under.IsSpecial(path);
}

bool FaultyFiles::IsDirectory(const std::string& path) {
  return m_under.IsDirectory(path);
}

std::string FaultyFiles::CurrentDirectory() {
  return m_under.CurrentDirectory();
}

std::vector<std::string> FaultyFiles::NamesIn(const std::string& folder) {
  return Strikes(Kinds::kAll, Need::kNothing, "list ", folder) ? std::vector<std::string>()
                                                               : m_under.NamesIn(folder);
}

bool FaultyFiles::IsOwnFile(const std::string& path) {
  return !Strikes(Kinds::kAll, Need::kNothing, "owner ", path) && m_under.IsOwnFile(path);
}

std::optional<int64_t> FaultyFiles::WriteTime(const std::string& path) {
  const bool strikes = Strikes(Kinds::kAll, Need::kNothing, "time ", path);
  return strikes ? std::nullopt : m_under.WriteTime(path);
}

std::string_view FaultyFiles::LineEnd() const {
  return m_under.LineEnd();
}

int64_t ForEveryFault(FaultyFiles& files, FaultyFiles::Fault fault, FaultyFiles::Kinds kinds,
                      const std::function<void()>& prepare, const std::function<void()>& operation,
                      const std::function<void(bool struck)>& check) {
  // A disk that stays full need not meet an operation of every number: the end is told by the
  // operations there were.
  constexpr int64_t kMostOperations = 1000000;
  int64_t struck_runs = 0;
  for (int64_t k = 1; k < kMostOperations; ++k) {
    SCOPED_TRACE("fault at operation " + std::to_string(k));
    prepare();
    files.FailAt(k, fault, kinds);
    operation();
    files.StopFailing();
    const bool struck = files.Failures() > 0;
    if (struck) ++struck_runs;
    check(struck);
    if (files.Operations() < k) return struck_runs;
  }
  ADD_FAILURE() << "the operation never ran through";
  return struck_runs;
}

int64_t ForAllFaults(FaultyFiles& files, const std::string& name,
                     const std::function<void()>& prepare, const std::function<void()>& operation,
                     const std::function<void(bool struck)>& check, int64_t least) {
  using Fault = FaultyFiles::Fault;
  using Kinds = FaultyFiles::Kinds;
  struct Trial {
    const char* name;
    Fault fault;
    Kinds kinds;
  };
  int64_t faults = 0;
  for (const Trial& trial :
       {Trial{"one changing operation", Fault::kOnce, Kinds::kMutating},
        Trial{"one operation", Fault::kOnce, Kinds::kAll},
        Trial{"disk full from a changing operation on", Fault::kDiskFull, Kinds::kMutating},
        Trial{"disk full from any operation on", Fault::kDiskFull, Kinds::kAll},
        Trial{"short write from a changing operation on", Fault::kShortWrite, Kinds::kMutating},
        Trial{"short write from any operation on", Fault::kShortWrite, Kinds::kAll}}) {
    SCOPED_TRACE(trial.name);
    const int64_t struck =
        ForEveryFault(files, trial.fault, trial.kinds, prepare, operation, check);
    EXPECT_GE(struck, least);
    faults += struck;
  }
  testing::Test::RecordProperty("faults", std::to_string(faults));
  if (std::getenv("TARN_FAULT_COUNTS") != nullptr) {
    std::printf("%8lld faults: %s\n", static_cast<long long>(faults), name.c_str());
  }
  return faults;
}

}  // namespace tarn

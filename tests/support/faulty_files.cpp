#include "support/faulty_files.h"

#include <gtest/gtest.h>

namespace tarn {

void FaultyFiles::FailAt(int64_t k, Fault fault, Kinds kinds) {
  m_k = k;
  m_fault = fault;
  m_kinds = kinds;
  m_count = 0;
  m_failures = 0;
  m_half_taken = false;
}

bool FaultyFiles::Strikes(Kinds kind, Need need) {
  if (m_kinds == Kinds::kAll || kind == Kinds::kMutating) ++m_count;
  if (m_k == 0 || m_count < m_k) return false;
  const bool counted = m_kinds == Kinds::kAll || kind == Kinds::kMutating;
  const bool fails = m_fault == Fault::kOnce ? counted && m_count == m_k : need == Need::kSpace;
  if (fails) ++m_failures;
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
  return Strikes(kind, need) ? kNoFile : m_under.Open(path, mode);
}

int64_t FaultyFiles::Read(Handle file, void* data, size_t size) {
  return Strikes(Kinds::kAll, Need::kNothing) ? -1 : m_under.Read(file, data, size);
}

int64_t FaultyFiles::Write(Handle file, const void* data, size_t size) {
  if (!Strikes(Kinds::kMutating, Need::kSpace)) return m_under.Write(file, data, size);
  if (m_fault != Fault::kShortWrite || m_half_taken) return -1;
  m_half_taken = true;
  return m_under.Write(file, data, size / 2);
}

bool FaultyFiles::Seek(Handle file, int64_t position) {
  return !Strikes(Kinds::kAll, Need::kNothing) && m_under.Seek(file, position);
}

int64_t FaultyFiles::Size(Handle file) {
  return Strikes(Kinds::kAll, Need::kNothing) ? -1 : m_under.Size(file);
}

bool FaultyFiles::Truncate(Handle file, int64_t size) {
  return !Strikes(Kinds::kMutating, Need::kNothing) && m_under.Truncate(file, size);
}

bool FaultyFiles::Sync(Handle file) {
  const bool short_write = m_fault == Fault::kShortWrite && !m_half_taken;
  const Need need = short_write ? Need::kNothing : Need::kSpace;
  return !Strikes(Kinds::kMutating, need) && m_under.Sync(file);
}

bool FaultyFiles::Close(Handle file) {
  const bool strikes = Strikes(Kinds::kMutating, Need::kNothing);
  return m_under.Close(file) && !strikes;
}

bool FaultyFiles::Rename(const std::string& from, const std::string& to) {
  return !Strikes(Kinds::kMutating, Need::kNothing) && m_under.Rename(from, to);
}

bool FaultyFiles::Remove(const std::string& path) {
  return !Strikes(Kinds::kMutating, Need::kNothing) && m_under.Remove(path);
}

bool FaultyFiles::CopyMode(const std::string& from, const std::string& to) {
  return !Strikes(Kinds::kAll, Need::kNothing) && m_under.CopyMode(from, to);
}

bool FaultyFiles::GiveDefaultMode(const std::string& path) {
  return !Strikes(Kinds::kAll, Need::kNothing) && m_under.GiveDefaultMode(path);
}

bool FaultyFiles::EnterDirectory(const std::string& path) {
  return !Strikes(Kinds::kAll, Need::kNothing) && m_under.EnterDirectory(path);
}

bool FaultyFiles::MakeFolder(const std::string& path) {
  return !Strikes(Kinds::kAll, Need::kSpace) && m_under.MakeFolder(path);
}

bool FaultyFiles::RemoveFolder(const std::string& path) {
  return !Strikes(Kinds::kAll, Need::kNothing) && m_under.RemoveFolder(path);
}

std::string FaultyFiles::MakeTemporary(const std::string& folder, const char* prefix) {
  const bool strikes = Strikes(Kinds::kMutating, Need::kSpace);
  return strikes ? std::string() : m_under.MakeTemporary(folder, prefix);
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
  return m_under.NamesIn(folder);
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

}  // namespace tarn

#include "cli/common.h"

#include <filesystem>
#include <fmt/printf.h>
#include <limits>
#include <system_error>

#include "base/paths.h"
#include "cli/interrupt.h"
#include "cli/messages.h"
#include "netfile/messages.h"

namespace tarn {

void AddNetworkArgument(CLI::App& command, std::string& path) {
  command.add_option("NET", path, "The network file (.net)")->required()->type_name("");
}

void AddSeedOption(CLI::App& command, std::optional<uint32_t>& seed) {
  command
      .add_option("--seed", seed,
                  "Draw random weights and random test sets from this number: the same number "
                  "gives the same run")
      ->type_name("N")
      ->check(CLI::Range(int64_t{0}, int64_t{std::numeric_limits<uint32_t>::max()}));
}

void TidyWhenInterrupted(const Session& session) {
  // The temporary folder itself stands in when no folder could be made: that one stays.
  const std::string& scratch = session.scratch.path();
  if (scratch != TemporaryFolder()) RemoveWhenInterrupted(scratch);
}

ExitStatus Open(Session& session, const std::string& path) {
  TidyWhenInterrupted(session);
  const Status status = OpenNetwork(session, path);
  // The scratch file of the untitled network is refused without a word in the window; here a
  // word is due.
  if (!status.ok() && status.message().empty()) {
    PrintError(kOpenNotTarn);
    return kFailed;
  }
  return Report(status);
}

void CompletePaths(std::initializer_list<std::string*> paths) {
  for (std::string* path : paths) *path = FullPath(*path);
}

bool SameFile(const std::string& a, const std::string& b) {
  if (a.empty() || b.empty()) return false;
  std::error_code error;
  return std::filesystem::equivalent(NativePath(a), NativePath(b), error) && !error;
}

ExitStatus KeepInputsSafe(std::initializer_list<const std::string*> outputs,
                          std::initializer_list<const std::string*> inputs) {
  for (const std::string* output : outputs) {
    for (const std::string* input : inputs) {
      if (!SameFile(*output, *input)) continue;
      PrintError(fmt::sprintf(kReadByCommand.data(), *output));
      return kWrongUsage;
    }
  }
  return kDone;
}

}  // namespace tarn

#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/faults_operations.h"

namespace tarn {

// An operation in a scene, run on a disk that fails, and what it has to leave then.
class FaultTrial {
 public:
  // The folder exists. The operation is run once as it should be.
  FaultTrial(FaultOperation operation, std::string folder, int32_t patterns);

  // A scene as if nothing had been done. What the folder holds is removed.
  void Open();
  void Run();
  // Everything is done or nothing, and the user has been told what is right; a fault has `struck`,
  // in reading or not. An operation that has failed succeeds now.
  void Check(bool struck, bool read_failed);
  bool IsDone() const { return m_scene->State() == m_done; }
  // Ends the scene; the number of files that the user has then.
  size_t End();

 private:
  void ExpectDone() const;
  void ExpectRightMessage(bool read_failed) const;

  FaultOperation m_operation;
  std::string m_folder;
  int32_t m_patterns;
  std::unique_ptr<FaultScene> m_scene;
  std::string m_before;
  std::string m_done;
};

// For the name of a test.
std::string NameOf(const FaultOperation& operation);

}  // namespace tarn

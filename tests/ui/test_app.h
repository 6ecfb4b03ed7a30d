#pragma once

#include "app/ui/tarn_app.h"

namespace tarn {

// The program's application without its main window; it does not end when memory runs out.
class TestApp : public TTarnApp {
 public:
  bool OnInit() override;
  int ends() const { return m_ends; }

 protected:
  void EndProgram() override;

 private:
  int m_ends = 0;
};

}  // namespace tarn

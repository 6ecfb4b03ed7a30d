#include "app/saving.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "app/session_fixture.h"
#include "support/fake_dialogs.h"
#include "support/slashes.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Saving : public SessionFixture {
 protected:
  Saving() { EXPECT_EQ(Train(), ""); }

  std::string FirstLine(const std::string& path) {
    const std::string text = m_files.Get(path).value_or("");
    return text.substr(0, text.find('\n'));
  }

  FakeDialogs m_dialogs;
};

TEST_F(Saving, ReplacesTheNetworksOwnFile) {
  const std::string before = m_files.Get("/home/nets/test.net").value();
  EXPECT_TRUE(SaveNetwork(m_session, m_dialogs));
  EXPECT_TRUE(m_session.saved);
  EXPECT_TRUE(m_network.trained);
  EXPECT_EQ(m_dialogs.busy_log, "+-");
  const std::string after = m_files.Get("/home/nets/test.net").value();
  EXPECT_NE(after, before);
  EXPECT_TRUE(SaveNetwork(m_session, m_dialogs));
  EXPECT_EQ(m_files.Get("/home/nets/test.net").value(), after) << "replaced, not appended to";
  EXPECT_THAT(m_dialogs.file_questions, IsEmpty());
}

TEST_F(Saving, AsksForANameForTheUntitledNetwork) {
  m_network.file_name = "/home/nets/UNTITLED.NE_";
  m_dialogs.files = {std::nullopt, "/home/nets/mine.net"};
  EXPECT_FALSE(SaveNetwork(m_session, m_dialogs));
  EXPECT_FALSE(m_session.saved);
  EXPECT_TRUE(SaveNetwork(m_session, m_dialogs));
  EXPECT_EQ(m_network.file_name, "/home/nets/mine.net");
  EXPECT_EQ(FirstLine("/home/nets/mine.net"), "TARNV2.1");
  EXPECT_EQ(m_dialogs.file_questions.back(),
            "Save Network As...|Tarn Files (*.net)|*.net|All Files(*.*)|*.*|");
}

TEST_F(Saving, TakesTheNewNameAndItsFolder) {
  m_files.AddFolder("/home/other");
  m_files.Put("/home/other/b.net", "something else");
  m_dialogs.files = {"/home/other/b.net"};
  EXPECT_TRUE(SaveNetworkAs(m_session, m_dialogs));
  EXPECT_EQ(m_network.file_name, "/home/other/b.net");
  EXPECT_EQ(FirstLine("/home/other/b.net"), "TARNV2.1") << "replaced, not appended to";
  EXPECT_EQ(m_files.CurrentDirectory(), "/home/other");
}

TEST_F(Saving, ChangesNothingWhenItFails) {
  m_session.saved = false;
  m_dialogs.files = {"/none/b.net"};
  EXPECT_FALSE(SaveNetworkAs(m_session, m_dialogs));
  EXPECT_EQ(Slashes(m_network.file_name), "/home/nets/test.net");
  EXPECT_FALSE(m_session.saved);
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("File Save Error - FILE NOT SAVED!|Cannot Write to Network File"));
}

TEST_F(Saving, AsksBeforeItWritesWhatCouldNotBeReadBack) {
  const std::string before = m_files.Get("/home/nets/test.net").value();
  m_network.layers[1].weights.All()[0] = std::numeric_limits<float>::infinity();
  m_dialogs.answers = {Answer::kNo, Answer::kYes};
  m_session.saved = false;
  EXPECT_FALSE(SaveNetwork(m_session, m_dialogs));
  EXPECT_FALSE(m_session.saved);
  EXPECT_EQ(m_files.Get("/home/nets/test.net").value(), before);
  EXPECT_TRUE(SaveNetwork(m_session, m_dialogs));
  EXPECT_NE(m_files.Get("/home/nets/test.net").value(), before);
  EXPECT_THAT(
      m_dialogs.asked.back(),
      "Tarn Warning|The file of this network could not be read back: a value of it is "
      "infinite or not a number, or a name begins like a section or a snapshot. Save it all "
      "the same?");
}

TEST_F(Saving, AsksBeforeItWritesASetupWhoseNameHidesTheWeights) {
  m_network.layers[1].weights.All()[0] = std::numeric_limits<float>::infinity();
  m_dialogs.files = {"/home/nets/test.net", "/home/nets/test.net", "/home/nets/test.net"};
  EXPECT_TRUE(SaveSetupAs(m_session, m_dialogs)) << "its weights stand in the file";
  EXPECT_THAT(m_dialogs.asked, IsEmpty());
  const std::string saved = m_files.Get("/home/nets/test.net").value();
  m_network.NetName = "WEIGHTS:mine";
  m_dialogs.answers = {Answer::kNo, Answer::kYes};
  EXPECT_FALSE(SaveSetupAs(m_session, m_dialogs));
  EXPECT_EQ(m_files.Get("/home/nets/test.net").value(), saved);
  EXPECT_TRUE(SaveSetupAs(m_session, m_dialogs));
  EXPECT_EQ(m_dialogs.asked.size(), 2U);
}

TEST_F(Saving, WritesTheSetupToItsOwnFileOrAnother) {
  m_network.Eta = 0.5F;
  m_dialogs.files = {std::nullopt, "/home/nets/setup.net", "/none/setup.net"};
  EXPECT_FALSE(SaveSetupAs(m_session, m_dialogs));
  EXPECT_TRUE(SaveSetupAs(m_session, m_dialogs));
  EXPECT_EQ(m_network.file_name, "/home/nets/setup.net");
  EXPECT_THAT(m_files.Get("/home/nets/setup.net").value_or(""), testing::HasSubstr(" 0.500000 "));
  EXPECT_FALSE(SaveSetupAs(m_session, m_dialogs));
  EXPECT_THAT(m_dialogs.told, ElementsAre("Network Error|Tarn Network File Error Detected"));
  EXPECT_EQ(m_network.file_name, "/home/nets/setup.net");
}

TEST_F(Saving, AnswersForASetupWhoseOldFileHasGone) {
  m_files.Remove("/home/nets/test.net");
  m_dialogs.files = {"/home/nets/setup.net"};
  EXPECT_FALSE(SaveSetupAs(m_session, m_dialogs));
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Network Error|Error openning old network file - save aborted"));
}

TEST_F(Saving, AsksBeforeATrainedNetworkIsLeft) {
  EXPECT_TRUE(MayLeave(m_session, m_dialogs)) << "nothing was trained";
  EXPECT_THAT(m_dialogs.asked, IsEmpty());
  m_network.iteration = 2;
  m_dialogs.answers = {Answer::kCancel, Answer::kNo, Answer::kYes};
  EXPECT_FALSE(MayLeave(m_session, m_dialogs));
  EXPECT_TRUE(MayLeave(m_session, m_dialogs));
  EXPECT_FALSE(m_session.saved);
  EXPECT_TRUE(MayLeave(m_session, m_dialogs));
  EXPECT_TRUE(m_session.saved);
  EXPECT_TRUE(MayLeave(m_session, m_dialogs)) << "it is saved";
  EXPECT_EQ(m_dialogs.asked.size(), 3U);
  EXPECT_EQ(m_dialogs.asked[0], "Network File Not Saved!|Save Network File?");
}

TEST_F(Saving, StaysWhenTheSaveAskedForFailsOrIsCancelled) {
  m_network.iteration = 2;
  m_network.file_name = "/home/nets/untitled.ne_";
  m_dialogs.answers = {Answer::kYes, Answer::kYes};
  m_dialogs.files = {std::nullopt, "/none/b.net"};
  EXPECT_FALSE(MayLeave(m_session, m_dialogs));
  EXPECT_FALSE(MayLeave(m_session, m_dialogs));
  EXPECT_EQ(m_dialogs.told.size(), 1U);
}

}  // namespace
}  // namespace tarn

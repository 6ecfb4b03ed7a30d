#include "app/ui/program_arguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace tarn {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using Request = ProgramArguments::Request;

ProgramArguments Read(const std::vector<std::string>& words) {
  return ReadProgramArguments(words, "1.2.3");
}

TEST(ProgramArguments, AreNoneOrANetworkFile) {
  EXPECT_EQ(Read({}).request, Request::kOpen);
  EXPECT_EQ(Read({}).file, "");
  const std::string name = "my \xC3\xBC 'net'.net";
  EXPECT_EQ(Read({name}).request, Request::kOpen);
  EXPECT_EQ(Read({name}).file, name);
  EXPECT_EQ(Read({"\xFC.net"}).file, "\xFC.net") << "bytes are kept";
}

TEST(ProgramArguments, TellHelpAndVersion) {
  for (const char* word : {"-h", "--help"}) {
    EXPECT_EQ(Read({word}).request, Request::kTell);
    EXPECT_THAT(Read({"a.net", word}).text, StartsWith("tarn [FILE]\n"));
  }
  EXPECT_EQ(Read({"--version"}).request, Request::kTell);
  EXPECT_EQ(Read({"--version"}).text, "tarn 1.2.3\n");
}

TEST(ProgramArguments, AreRefusedWithTheReason) {
  EXPECT_EQ(Read({"--bogus"}).request, Request::kRefuse);
  EXPECT_EQ(Read({"--bogus"}).text, "tarn: there is no option '--bogus'; see 'tarn --help'\n");
  EXPECT_EQ(Read({"a.net", "b.net"}).request, Request::kRefuse);
  EXPECT_EQ(Read({"a.net", "b.net"}).text,
            "tarn: 'a.net' and 'b.net': one network at a time; see 'tarn --help'\n");
}

TEST(ProgramArguments, AreFilesBehindTwoDashes) {
  EXPECT_EQ(Read({"--", "-x.net"}).request, Request::kOpen);
  EXPECT_EQ(Read({"--", "-x.net"}).file, "-x.net");
  EXPECT_EQ(Read({"--", "--"}).file, "--");
  EXPECT_THAT(Read({"-x.net"}).text, HasSubstr("no option '-x.net'"));
}

}  // namespace
}  // namespace tarn

#include "netgraph/graph_file.h"

#include <gtest/gtest.h>

#include "netgraph/graph_csv.h"
#include "netgraph/messages.h"
#include "support/faulty_files.h"
#include "support/memory_files.h"

namespace tarn {
namespace {

class GraphFile : public testing::Test {
 protected:
  GraphFile() {
    m_graph.title = "Title";
    m_graph.curves.resize(1);
    m_graph.curves[0].x = {1, 2};
    m_graph.curves[0].y = {3, 4};
  }

  Graph m_graph;
  MemoryFiles m_files;
  ScopedFileLayer m_layer{m_files};
};

TEST_F(GraphFile, IsATable) {
  ASSERT_TRUE(SaveTable(m_graph, "/home/graph.csv").ok());
  EXPECT_EQ(m_files.Get("/home/graph.csv"), GraphCsv(m_graph));
}

TEST_F(GraphFile, IsAPictureOfTheSizeAsked) {
  ASSERT_TRUE(SavePicture(m_graph, {400, 300}, "/home/graph.svg").ok());
  const std::string picture = m_files.Get("/home/graph.svg").value();
  EXPECT_NE(picture.find("width=\"400\" height=\"300\""), std::string::npos);
  EXPECT_NE(picture.find("<title>Title</title>"), std::string::npos);
}

TEST_F(GraphFile, IsAPictureOfWhatIsSeen) {
  m_graph.curves[0].name = "Targets";
  GraphView view(m_graph);
  ASSERT_TRUE(SavePicture(m_graph, view, {400, 300}, "/home/all.svg").ok());
  ASSERT_TRUE(SavePicture(m_graph, {400, 300}, "/home/graph.svg").ok());
  EXPECT_EQ(m_files.Get("/home/all.svg"), m_files.Get("/home/graph.svg"));
  view.ToggleLegend();
  ASSERT_TRUE(SavePicture(m_graph, view, {400, 300}, "/home/plain.svg").ok());
  EXPECT_NE(m_files.Get("/home/graph.svg").value().find("Targets"), std::string::npos);
  EXPECT_EQ(m_files.Get("/home/plain.svg").value().find("Targets"), std::string::npos);
}

TEST_F(GraphFile, StaysWhatItWasWhenItCannotBeWritten) {
  m_files.Put("/home/graph.csv", "old");
  FaultyFiles faulty(m_files);
  const ScopedFileLayer layer(faulty);
  faulty.FailAt(1, FaultyFiles::Fault::kDiskFull);
  EXPECT_EQ(SaveTable(m_graph, "/home/graph.csv").message(), "The graph cannot be written");
  EXPECT_EQ(SavePicture(m_graph, {400, 300}, "/home/graph.csv").message(), kGraphNotSaved);
  EXPECT_EQ(m_files.Get("/home/graph.csv"), "old");
}

}  // namespace
}  // namespace tarn

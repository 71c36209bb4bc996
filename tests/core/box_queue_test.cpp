#include "core/box_queue.h"

#include <gtest/gtest.h>

namespace core {
namespace {

TEST(BoxQueue, ShowsOneAtATimeInOrder) {
  BoxQueue queue;
  std::string shown;
  int depth = 0;
  const std::function<void(const Box&)> show = [&](const Box& box) {
    EXPECT_EQ(++depth, 1);
    shown += box.text;
    if (box.text == "a") queue.Post({.text = "c"});  // a packet arrives behind the box ...
    queue.ShowAll(show);                             // ... and the loop inside the box comes by
    --depth;
  };
  queue.Post({.text = "a"});
  queue.Post({.text = "b"});
  queue.ShowAll(show);
  EXPECT_EQ(shown, "abc");
  queue.Post({.text = "d"});
  queue.ShowAll(show);
  EXPECT_EQ(shown, "abcd");
}

TEST(BoxQueue, DropsWhatAFloodAdds) {
  BoxQueue queue;
  for (std::size_t i = 0; i < kMaxWaitingBoxes + 50; ++i) queue.Post({.text = std::to_string(i)});
  EXPECT_EQ(queue.Waiting(), kMaxWaitingBoxes);
  std::string last;
  queue.ShowAll([&](const Box& box) { last = box.text; });
  EXPECT_EQ(last, "99");
}

// A notice of 60,000 bytes, or of a thousand lines, would push the button off the screen.
TEST(BoxQueue, KeepsTheBeginningOfAnEnormousBox) {
  BoxQueue queue;
  queue.Post({.text = std::string(60000, 'x'), .title = std::string(40000, 't')});
  queue.Post({.text = std::string(1000, '\n')});
  queue.Post({.text = std::string(30 * 90, 'x'), .title = std::string(200, 't')});
  std::vector<Box> shown;
  queue.ShowAll([&](const Box& box) { shown.push_back(box); });
  EXPECT_EQ(shown[0].text, std::string(30 * 90, 'x') + "...");
  EXPECT_EQ(shown[0].title, std::string(200, 't') + "...");
  EXPECT_EQ(shown[1].text, std::string(29, '\n') + "...");
  EXPECT_EQ(shown[2].text.size(), 30u * 90u) << "what fits stays as it is";
  EXPECT_EQ(shown[2].title.size(), 200u);
}

}  // namespace
}  // namespace core

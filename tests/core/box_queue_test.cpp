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

}  // namespace
}  // namespace core

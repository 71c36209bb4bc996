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

// Enormous notices would push the button off the screen: by their length, by their line breaks of whatever kind, or by
// a word that the box cannot wrap.
TEST(BoxQueue, KeepsTheBeginningOfAnEnormousBox) {
  const auto shown = [](const std::string& text) {
    BoxQueue queue;
    queue.Post({.text = text, .title = std::string(40000, 't')});
    std::string result;
    queue.ShowAll([&](const Box& box) {
      result = box.text;
      EXPECT_EQ(box.title, std::string(200, 't') + "...") << "one row";
    });
    return result;
  };
  std::string words, rows;
  for (int i = 0; i < 1000; ++i) words += "words ends ", rows += std::string(40, 'x') + "\r\n";
  EXPECT_EQ(shown(words), words.substr(0, 24 * 40) + "...");
  EXPECT_EQ(shown(words.substr(0, 24 * 40)), words.substr(0, 24 * 40)) << "what fits stays as it is";
  EXPECT_EQ(shown(std::string(40000, 'x')), rows.substr(0, 24 * 42 - 2) + "...");
  EXPECT_EQ(shown(rows), rows.substr(0, 24 * 42 - 1) + "...");
  EXPECT_EQ(shown(std::string(1000, '\r')), std::string(23, '\r') + "...");
  EXPECT_EQ(shown(std::string(1000, '\n')), std::string(23, '\n') + "...");
}

}  // namespace
}  // namespace core

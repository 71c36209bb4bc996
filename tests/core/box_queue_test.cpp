#include "core/message_box.h"

#include <gtest/gtest.h>

#include <new>

#include "tests/support/in_code_page.h"

namespace core {
namespace {

TEST(BoxQueue, ShowsOneAtATimeInOrder) {
  BoxQueue queue;
  std::string shown;
  int depth = 0;
  const std::function<bool(const Box&)> show = [&](const Box& box) {
    EXPECT_EQ(++depth, 1);
    shown += box.text;
    if (box.text == "a") queue.Post({.text = "c"});  // a packet arrives while the box is open ...
    EXPECT_TRUE(queue.ShowAll(show));                // ... and its loop calls this again
    return --depth == 0;
  };
  queue.Post({.text = "a"});
  queue.Post({.text = "b"});
  queue.ShowAll(show);
  EXPECT_EQ(shown, "abc");
  queue.Post({.text = "d"});
  queue.ShowAll(show);
  EXPECT_EQ(shown, "abcd");
}

TEST(BoxQueue, DropsBoxesBeyondItsLimit) {
  BoxQueue queue;
  for (std::size_t i = 0; i < kMaxWaitingBoxes + 50; ++i) queue.Post({.text = std::to_string(i)});
  EXPECT_EQ(queue.Waiting(), kMaxWaitingBoxes);
  std::string last;
  queue.ShowAll([&](const Box& box) { return last = box.text, true; });
  EXPECT_EQ(last, "99");
}

// A box that cannot be shown now is kept; one that throws must not block the next ones.
TEST(BoxQueue, ContinuesAfterAFailingBox) {
  BoxQueue queue;
  for (const char* text : {"a", "b", "c"}) queue.Post({.text = text});
  EXPECT_THROW(queue.ShowAll([](const Box&) -> bool { throw std::bad_alloc(); }), std::bad_alloc);
  EXPECT_FALSE(queue.ShowAll([](const Box&) { return false; }));
  std::string shown;
  EXPECT_TRUE(queue.ShowAll([&](const Box& box) { return shown += box.text, true; }));
  EXPECT_EQ(shown, "bc");
}

TEST(BoxQueue, TruncatesTextsThatDoNotFitAtTheirEndOnly) {
  const Fits ten = [](const std::string& text) { return text.size() <= 10; };
  const auto shown = [&](const char* text, const char* closing) {
    return CutToFit({.text = text, .closing = closing, .title = ""}, ten, ten).text;
  };
  EXPECT_EQ(shown("0123456789", ""), "0123456789");
  EXPECT_EQ(shown("0123456789a", ""), "0123456...");
  EXPECT_EQ(shown("012345", "|end"), "012345|end");
  EXPECT_EQ(shown("0123456", "|end"), "012...|end") << "the closing is kept";
  EXPECT_EQ(shown("x", "|a closing of its own"), "...|a closing of its own");
  const std::string zero("ab\0cdefghijklm", 14);
  EXPECT_EQ(CutToFit({.text = zero, .closing = "!", .title = zero}, ten, ten).text, "ab!");
  EXPECT_EQ(CutToFit({.text = "", .title = "a title that is long"}, ten, ten).title, "a title...");
  const support::InCodePage japanese(932);
  EXPECT_EQ(shown("a\x83\x41\x83\x41\x83\x41\x83\x41\x83\x41", ""), "a\x83\x41\x83\x41\x83\x41...") << "by characters";
  EXPECT_EQ(shown("\x83\x41\x83\x41\x83\x41\x83\x41\x83\x41\x83\x41", ""), "\x83\x41\x83\x41\x83\x41...");
}

}  // namespace
}  // namespace core

#include "ui/conversation/conversation.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <numeric>
#include <vector>

namespace conversation {
namespace {

constexpr std::size_t kBlockSize = 64u << 10;
constexpr std::size_t kSizeOfStart = sizeof(std::uint16_t);

// All open conversations, which share a limit.
std::vector<Conversation*>& All() {
  static std::vector<Conversation*> all;
  return all;
}

// A variable-length integer: seven bits per byte, the lowest first; the highest bit is set in all bytes but the last.
void PutNumber(std::string& bytes, std::size_t number) {
  for (; number >> 7 != 0; number >>= 7) bytes += static_cast<char>((number & 0x7F) | 0x80);
  bytes += static_cast<char>(number);
}

std::size_t TakeNumber(const char*& at) {
  std::size_t number = 0;
  for (unsigned shift = 0;; shift += 7) {
    const auto byte = static_cast<unsigned char>(*at++);
    number |= static_cast<std::size_t>(byte & 0x7F) << shift;
    if (byte <= 0x7F) return number;
  }
}

std::string_view TakeText(const char*& at, std::size_t length) {
  const std::string_view text(at, length);
  at += length;
  return text;
}

std::string Packed(const ChatLine& line) {
  std::string bytes(sizeof line.colour, '\0');
  std::memcpy(bytes.data(), &line.colour, sizeof line.colour);
  PutNumber(bytes, static_cast<std::size_t>(line.indent.value));
  for (const std::string_view text : {line.prefix, line.sender, line.text}) PutNumber(bytes, text.size());
  return bytes.append(line.prefix).append(line.sender).append(line.text);
}

ChatLine Unpacked(const char* at) {
  ChatLine line;
  std::memcpy(&line.colour, at, sizeof line.colour);
  at += sizeof line.colour;
  line.indent = {static_cast<std::int32_t>(TakeNumber(at))};
  const std::size_t prefix = TakeNumber(at), sender = TakeNumber(at), text = TakeNumber(at);
  line.prefix = TakeText(at, prefix);
  line.sender = TakeText(at, sender);
  line.text = TakeText(at, text);
  return line;
}

}  // namespace

Conversation::Conversation(std::size_t maxOfConversation, std::size_t maxOfAll)
    : maxOfConversation_(maxOfConversation), maxOfAll_(maxOfAll) {
  All().push_back(this);
}

Conversation::~Conversation() { std::erase(All(), this); }

void Conversation::Add(const ChatLine& line) {
  const std::string bytes = Packed(line);
  if (blocks_.empty() || blocks_.back().bytes.size() + bytes.size() > kBlockSize) {
    if (!blocks_.empty()) blocks_.back().bytes.shrink_to_fit();
    blocks_.push_back({end_, {}, {}});
  }
  blocks_.back().Append(bytes);
  size_ += bytes.size() + kSizeOfStart;
  ++end_;
  while (size_ > maxOfConversation_ && blocks_.size() > 1) DropOldest();
  const auto ofAll = [](std::size_t sum, const Conversation* one) { return sum + one->size_; };
  while (std::accumulate(All().begin(), All().end(), std::size_t{0}, ofAll) > maxOfAll_) {
    Conversation& largest = **std::ranges::max_element(All(), {}, &Conversation::size_);
    if (largest.blocks_.size() <= 1) break;
    largest.DropOldest();
  }
}

// Strong guarantee: a failure removes the start again.
void Conversation::Block::Append(const std::string& line) {
  starts.push_back(static_cast<std::uint16_t>(bytes.size()));
  try {
    bytes += line;
  } catch (...) {
    starts.pop_back();
    throw;
  }
}

void Conversation::DropOldest() {
  size_ -= blocks_.front().bytes.size() + blocks_.front().starts.size() * kSizeOfStart;
  blocks_.pop_front();
}

void Conversation::Clear() {
  blocks_.clear();
  size_ = end_ = 0;
}

ChatLine Conversation::At(std::size_t number) const {
  const Block& block = *std::prev(std::ranges::upper_bound(blocks_, number, {}, &Block::first));
  return Unpacked(block.bytes.data() + block.starts[number - block.first]);
}

}  // namespace conversation

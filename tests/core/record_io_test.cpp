#include "core/record_io.h"

#include "tests/support/desktop_test.h"

namespace core {
namespace {

using support::ErrorOf;

TEST(RecordWriter, WritesFieldsAsTheyStand) {
  RecordWriter writer;
  writer.Text("jo\"e").Number(-5).Text("").EndRecord().Single(2505).Single(-30).Single(0.5f).Single(-0.0f).EndRecord();
  EXPECT_EQ(writer.Bytes(), "\"jo\"e\",-5,\"\"\r\n2505,-30,.5,0\r\n");
  EXPECT_EQ(BareSingle(-1.25f), "-1.25");
  EXPECT_EQ(BareSingle(-0.25f), "-.25");
  EXPECT_EQ(BareSingle(16777216), "16777216");
}

TEST(RecordReader, ReadsQuotedAndBareFields) {
  RecordReader reader("  \"a, b\" , bare text\r\n\"7\",8.5\n&H10\r\n\r\nlast");
  EXPECT_EQ(reader.Text(), "a, b");
  EXPECT_EQ(reader.Text(), "bare text");
  EXPECT_EQ(reader.Int16(), 7);
  EXPECT_EQ(reader.Int16(), 8);
  EXPECT_EQ(reader.Int32(), 16);
  EXPECT_EQ(reader.Int16(), 0);  // an empty line is an empty field
  EXPECT_EQ(reader.Text(), "last");
  EXPECT_EQ(ErrorOf([&] { reader.Text(); }), 62);
}

// Comma and line end are the same to it, so fields shift silently until a number meets a text.
TEST(RecordReader, ShortAndLongRecordsShift) {
  RecordReader reader("1\r\n\"anna\",2,3\r\n4\r\n");
  EXPECT_EQ(reader.Int16(), 1);
  EXPECT_EQ(reader.Int16(), 0);
  EXPECT_EQ(reader.Int16(), 2);
  EXPECT_EQ(reader.Int16(), 3);
  EXPECT_EQ(reader.Int16(), 4);
}

TEST(RecordReader, AQuoteInsideATextBeginsTheNextField) {
  RecordReader reader("\"jo\"e\",\"255\"\r\n");
  EXPECT_EQ(reader.Text(), "jo");
  EXPECT_EQ(reader.Text(), "e\"");
  EXPECT_EQ(reader.Text(), "255");
}

TEST(RecordReader, EndsAndOverflows) {
  EXPECT_EQ(ErrorOf([] { RecordReader("").Text(); }), 62);
  EXPECT_EQ(ErrorOf([] { RecordReader("  ").Int16(); }), 62);
  EXPECT_EQ(ErrorOf([] { RecordReader("40000").Int16(); }), 6);
  EXPECT_EQ(ErrorOf([] { RecordReader("\"3000000000\"").Int32(); }), 6);
  EXPECT_EQ(RecordReader("\"never closed\r\n").Text(), "never closed\r\n");
}

}  // namespace
}  // namespace core

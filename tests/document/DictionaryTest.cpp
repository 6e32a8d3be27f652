#include "refhost/document/Dictionary.h"

#include <gtest/gtest.h>

namespace refhost {
namespace {

TEST(Dictionary, TypedEntries) {
  auto d = Dictionary::create();
  d->setInteger("dpi.", 300);
  d->setBoolean("spot", true);
  d->setReal("padd", 36.5);
  d->setString("name", "x");
  auto nested = Dictionary::create();
  d->setDictionary("DW Auto Rasterize", nested);
  EXPECT_EQ(d->typeOf("dpi."), Dictionary::Type::Integer);
  EXPECT_EQ(d->typeOf("spot"), Dictionary::Type::Boolean);
  EXPECT_EQ(d->typeOf("padd"), Dictionary::Type::Real);
  EXPECT_EQ(d->typeOf("name"), Dictionary::Type::String);
  EXPECT_EQ(d->typeOf("DW Auto Rasterize"), Dictionary::Type::Dictionary);
  EXPECT_FALSE(d->typeOf("none").has_value());
  EXPECT_EQ(d->getInteger("dpi."), 300);
  EXPECT_FALSE(d->getInteger("padd").has_value()) << "no conversion between types";
  EXPECT_EQ(d->getDictionary("DW Auto Rasterize"), nested);
  EXPECT_EQ(d->keys(), (std::vector<std::string>{"DW Auto Rasterize", "dpi.", "name", "padd", "spot"}));

  DictionaryEntryRef ref{d, "dpi."};
  EXPECT_TRUE(ref.exists());
  d->erase("dpi.");
  EXPECT_FALSE(ref.exists());
}

TEST(Dictionary, DeepCopyAndContentEquality) {
  auto d = Dictionary::create();
  auto nested = Dictionary::create();
  nested->setReal("r", 1.5);
  d->setDictionary("n", nested);
  auto copy = d->deepCopy();
  EXPECT_TRUE(copy->sameContent(*d));
  EXPECT_NE(copy->getDictionary("n"), nested);
  copy->getDictionary("n")->setReal("r", 2.5);
  EXPECT_FALSE(copy->sameContent(*d));
  EXPECT_EQ(nested->getReal("r"), 1.5);
  auto other = Dictionary::create();
  other->setInteger("n", 1);
  EXPECT_FALSE(other->sameContent(*d));
}

}  // namespace
}  // namespace refhost

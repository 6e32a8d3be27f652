// Dictionaries: typed entries, counted references, interned keys, entries stored by reference,
// live-effect parameters.
#include <functional>

#include "SuiteTestSupport.h"
#include "refhost/suites/DictionaryRefs.h"

using namespace suitetest;

namespace {

class DictionaryTest : public SuiteTest {
 protected:
  const DWDictionarySuite& dict() { return suite<DWDictionarySuite>(kDWDictionarySuite, kDWDictionarySuiteVersion); }
  const DWDocumentSuite& document() { return suite<DWDocumentSuite>(kDWDocumentSuite, kDWDocumentSuiteVersion); }

  DWDictionaryRef documentDictionary() {
    DWDictionaryRef ref = nullptr;
    EXPECT_EQ(document().GetDictionary(&ref), kDWNoErr);
    return ref;
  }
};

}  // namespace

TEST_F(DictionaryTest, TypedEntriesRoundTrip) {
  DWDictionaryRef d = documentDictionary();
  const DWDictKey key = dict().MakeKey("value");
  int32_t i = 0;
  DWBool b = 0;
  double r = 0;
  struct Case {
    const char* name;
    std::function<DWErr()> set;
    std::function<DWErr()> get;
    std::function<bool()> same;
    std::function<DWErr()> getOtherType;
  };
  const Case cases[] = {
      {"integer", [&] { return dict().SetInteger(d, key, -42); }, [&] { return dict().GetInteger(d, key, &i); },
       [&] { return i == -42; }, [&] { return dict().GetReal(d, key, &r); }},
      {"boolean", [&] { return dict().SetBoolean(d, key, 1); }, [&] { return dict().GetBoolean(d, key, &b); },
       [&] { return b == 1; }, [&] { return dict().GetInteger(d, key, &i); }},
      {"real", [&] { return dict().SetReal(d, key, 150.75); }, [&] { return dict().GetReal(d, key, &r); },
       [&] { return r == 150.75; }, [&] { return dict().GetBoolean(d, key, &b); }},
  };
  for (const Case& c : cases) {
    ASSERT_EQ(c.set(), kDWNoErr) << c.name;
    EXPECT_EQ(dict().IsKnown(d, key), 1) << c.name;
    ASSERT_EQ(c.get(), kDWNoErr) << c.name;
    EXPECT_TRUE(c.same()) << c.name;
    EXPECT_EQ(c.getOtherType(), kHostWrongType) << c.name;
  }
  EXPECT_EQ(dict().GetInteger(d, dict().MakeKey("absent"), &i), kHostNotFound);
  EXPECT_EQ(dict().IsKnown(d, dict().MakeKey("absent")), 0);
  EXPECT_EQ(doc.dictionary()->getReal("value"), 150.75) << "the document's own dictionary changed";
  EXPECT_EQ(dict().Release(d), kDWNoErr);
}

TEST_F(DictionaryTest, CountedReferencesAndInternedKeys) {
  EXPECT_EQ(dict().MakeKey("dpi."), dict().MakeKey(std::string("dpi.").c_str()));
  EXPECT_NE(dict().MakeKey("dpi."), dict().MakeKey("colr"));
  DWDictionaryRef first = documentDictionary();
  DWDictionaryRef second = documentDictionary();
  EXPECT_EQ(first, second) << "one handle per dictionary";
  EXPECT_EQ(dictionaryReferences(first), 2);
  EXPECT_EQ(dict().Release(first), kDWNoErr);
  EXPECT_EQ(dict().IsValid(second), 1);
  EXPECT_EQ(dict().Release(second), kDWNoErr);
  EXPECT_EQ(dict().IsValid(second), 0);
  EXPECT_EQ(dict().Release(second), kHostBadParameter);
}

// The document's settings entry as the plug-in makes it: a new dictionary stored, then filled.
TEST_F(DictionaryTest, NestedEntriesAreSharedNotCopied) {
  DWDictionaryRef d = documentDictionary();
  DWDictionaryRef created = nullptr;
  ASSERT_EQ(dict().CreateDictionary(&created), kDWNoErr);
  const DWDictKey entryKey = dict().MakeKey("DW Auto Rasterize");
  ASSERT_EQ(dict().SetDictEntry(d, entryKey, created), kDWNoErr);
  ASSERT_EQ(dict().SetInteger(created, dict().MakeKey("dpi."), 150), kDWNoErr);
  EXPECT_EQ(doc.dictionary()->getDictionary("DW Auto Rasterize")->getInteger("dpi."), 150);

  DWDictionaryRef entry = nullptr;
  ASSERT_EQ(dict().GetDictEntry(d, entryKey, &entry), kDWNoErr);
  EXPECT_EQ(entry, created);
  EXPECT_EQ(dict().SetDictEntry(created, dict().MakeKey("loop"), d), kHostBadParameter) << "no cycles";
  EXPECT_EQ(dict().GetDictEntry(d, dict().MakeKey("absent"), &entry), kHostNotFound);
  ASSERT_EQ(dict().SetInteger(d, dict().MakeKey("plain"), 1), kDWNoErr);
  EXPECT_EQ(dict().GetDictEntry(d, dict().MakeKey("plain"), &entry), kHostWrongType);
  for (DWDictionaryRef ref : {created, created, d}) EXPECT_EQ(dict().Release(ref), kDWNoErr);
}

// A live effect's parameters reach the plug-in as a handle the host makes for its message.
TEST_F(DictionaryTest, LiveEffectParameters) {
  DictionaryPtr parameters = Dictionary::create();
  parameters->setInteger("colr", 5);
  DWDictionaryRef ref = retainDictionary(parameters);
  int32_t type = 0;
  ASSERT_EQ(dict().GetInteger(ref, dict().MakeKey("colr"), &type), kDWNoErr);
  EXPECT_EQ(type, 5);
  ASSERT_EQ(dict().SetBoolean(ref, dict().MakeKey("mask"), 1), kDWNoErr);
  EXPECT_EQ(parameters->getBoolean("mask"), true);
  EXPECT_EQ(dict().Release(ref), kDWNoErr);
  EXPECT_EQ(dictionaryOf(ref), nullptr);
}

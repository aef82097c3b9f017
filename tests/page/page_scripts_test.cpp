#include "page/devtools/page_scripts.h"

#include <gtest/gtest.h>

namespace kx::devtools {
namespace {

using nlohmann::json;

TEST(DevToolsPageScripts, ElementListIsReadInOrderWithEveryField) {
  const auto elements = ReadElements(json::parse(R"([
    {"tag": "FORM", "type": "", "name": "login", "value": "", "checked": false},
    {"tag": "INPUT", "type": "checkbox", "name": "keep", "value": "on", "checked": true},
    {"tag": "TEXTAREA", "type": "", "name": "note", "value": "a\nb", "checked": false}])"));
  ASSERT_TRUE(elements);
  ASSERT_EQ(elements->size(), 3u);
  EXPECT_EQ((*elements)[0].tag, "FORM");
  EXPECT_EQ((*elements)[0].name, "login");
  EXPECT_EQ((*elements)[1].type, "checkbox");
  EXPECT_EQ((*elements)[1].value, "on");
  EXPECT_TRUE((*elements)[1].checked);
  EXPECT_EQ((*elements)[2].value, "a\nb");
  EXPECT_FALSE((*elements)[2].checked);
}

TEST(DevToolsPageScripts, MissingOrOddFieldsReadAsEmpty) {
  const auto elements =
      ReadElements(json::parse(R"([{"tag": "P"}, {"name": 3, "value": null, "checked": "yes"}])"));
  ASSERT_TRUE(elements);
  ASSERT_EQ(elements->size(), 2u);
  EXPECT_EQ((*elements)[0].tag, "P");
  EXPECT_EQ((*elements)[0].value, "");
  EXPECT_EQ((*elements)[1].name, "");
  EXPECT_FALSE((*elements)[1].checked);
}

TEST(DevToolsPageScripts, ValuesThatAreNotElementListsGiveNone) {
  EXPECT_FALSE(ReadElements(json()));
  EXPECT_FALSE(ReadElements(json("complete")));
  EXPECT_FALSE(ReadElements(json::parse(R"({"tag": "P"})")));
  EXPECT_FALSE(ReadElements(json::parse(R"([{"tag": "P"}, 4])")));
  EXPECT_TRUE(ReadElements(json::array()));
}

TEST(DevToolsPageScripts, ValuesAreWrittenAsOneScriptStringLiteral) {
  // Quotes, backslashes, line breaks and a closing script tag stay inside
  // the literal, so no value can change what the script does.
  const std::string value = "a\"b'c\\n\nd</script>日本";
  const std::string script = SetValueScript(3, value);
  const std::string literal = json(value).dump();
  EXPECT_NE(script.find("e.value = " + literal + ";"), std::string::npos) << script;
  EXPECT_NE(script.find("getElementsByTagName('*')[3]"), std::string::npos) << script;
}

}  // namespace
}  // namespace kx::devtools

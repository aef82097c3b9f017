#include "page/devtools/devtools_messages.h"

#include <gtest/gtest.h>

namespace kx::devtools {
namespace {

using nlohmann::json;

TEST(DevToolsTargetList, FirstPageIsChosenOverOtherTargets) {
  const auto page = FirstPageSocket(R"([
    {"type": "service_worker", "webSocketDebuggerUrl": "ws://127.0.0.1:9222/devtools/page/W"},
    {"type": "page", "title": "Login", "webSocketDebuggerUrl": "ws://127.0.0.1:9333/devtools/page/A1"},
    {"type": "page", "webSocketDebuggerUrl": "ws://127.0.0.1:9222/devtools/page/B2"}])");
  ASSERT_TRUE(page);
  EXPECT_EQ(page->port, 9333);
  EXPECT_EQ(page->path, "/devtools/page/A1");
}

TEST(DevToolsTargetList, ListsWithoutAReachablePageGiveNone) {
  EXPECT_FALSE(FirstPageSocket("[]"));
  EXPECT_FALSE(
      FirstPageSocket(R"([{"type": "iframe", "webSocketDebuggerUrl": "ws://127.0.0.1:1/x"}])"));
  // A page another client holds is listed without an address.
  EXPECT_FALSE(FirstPageSocket(R"([{"type": "page", "id": "A"}])"));
  EXPECT_FALSE(FirstPageSocket(R"([{"type": "page", "webSocketDebuggerUrl": 5}])"));
  EXPECT_FALSE(FirstPageSocket(R"({"type": "page"})"));
  EXPECT_FALSE(FirstPageSocket(R"([1, "page", null])"));
  EXPECT_FALSE(FirstPageSocket("[{\"type\": \"page\", "));
  EXPECT_FALSE(FirstPageSocket(""));
  EXPECT_FALSE(FirstPageSocket("<html>404</html>"));
}

TEST(DevToolsTargetList, ATabIsFoundByItsIdAndAnEmptyIdMeansTheFirstPage) {
  const std::string list = R"([
    {"type": "browser_ui", "id": "U", "webSocketDebuggerUrl": "ws://127.0.0.1:9222/devtools/page/U"},
    {"type": "page", "id": "B", "webSocketDebuggerUrl": "ws://127.0.0.1:9222/devtools/page/B"},
    {"type": "page", "id": "A", "webSocketDebuggerUrl": "ws://127.0.0.1:9222/devtools/page/A"}])";
  EXPECT_EQ(PageSocket(list, "A")->path, "/devtools/page/A");
  EXPECT_EQ(PageSocket(list, "")->path, "/devtools/page/B");
  EXPECT_FALSE(PageSocket(list, "U"));  // not a page
  EXPECT_FALSE(PageSocket(list, "closed"));
  EXPECT_EQ(FirstPageId(list), "B");
  EXPECT_FALSE(FirstPageId(R"([{"type": "page"}])"));
  EXPECT_FALSE(FirstPageId("not json"));
}

TEST(DevToolsBrowserAnswers, VersionNewTabAndTabStateAreReadStrictly) {
  EXPECT_TRUE(IsBrowserVersion(R"({"Browser": "Edg/130.0", "Protocol-Version": "1.3"})"));
  EXPECT_FALSE(IsBrowserVersion(R"({"Browser": 1})"));
  EXPECT_FALSE(IsBrowserVersion("<html></html>"));
  EXPECT_EQ(NewTabId(R"({"id": "T", "type": "page"})"), "T");
  EXPECT_FALSE(NewTabId(R"([{"id": "T", "type": "page"}])"));
  EXPECT_FALSE(NewTabId(R"({"id": 5, "type": "page"})"));
  EXPECT_EQ(NewTabTarget("a b&c=日"), "/json/new?a%20b%26c%3D%E6%97%A5");
  EXPECT_EQ(NewTabTarget("Az09-._~"), "/json/new?Az09-._~");
  const auto state = ReadTabState(json::array({"file:///x", "complete"}));
  ASSERT_TRUE(state);
  EXPECT_EQ(state->url, "file:///x");
  EXPECT_EQ(state->readyState, "complete");
  EXPECT_FALSE(ReadTabState(json::array({"file:///x"})));
  EXPECT_FALSE(ReadTabState(json("complete")));
}

TEST(DevToolsTargetList, OnlyLoopbackAddressesAreFollowed) {
  EXPECT_TRUE(ParseSocketUrl("ws://127.0.0.1:9222/devtools/page/A"));
  EXPECT_TRUE(ParseSocketUrl("ws://localhost:9222/devtools/page/A"));
  EXPECT_TRUE(ParseSocketUrl("ws://[::1]:9222/devtools/page/A"));
  EXPECT_FALSE(ParseSocketUrl("ws://192.168.1.5:9222/devtools/page/A"));
  EXPECT_FALSE(ParseSocketUrl("ws://example.com:9222/devtools/page/A"));
  EXPECT_FALSE(ParseSocketUrl("ws://127.0.0.1.example.com:9222/x"));
  EXPECT_FALSE(ParseSocketUrl("ws://user@127.0.0.1:9222/x"));
  EXPECT_FALSE(
      FirstPageSocket(R"([{"type": "page", "webSocketDebuggerUrl": "ws://10.0.0.1:9222/p"}])"));
}

TEST(DevToolsTargetList, MalformedAddressesGiveNone) {
  for (const char* url :
       {"wss://127.0.0.1:9222/p", "http://127.0.0.1:9222/p", "ws://127.0.0.1/p",
        "ws://127.0.0.1:9222", "ws://127.0.0.1:/p", "ws://127.0.0.1:0/p", "ws://127.0.0.1:65536/p",
        "ws://127.0.0.1:-1/p", "ws://127.0.0.1:92x2/p", "", "ws://"})
    EXPECT_FALSE(ParseSocketUrl(url)) << url;
}

TEST(DevToolsEvaluate, RequestCarriesIdExpressionAndAsksForTheValue) {
  const json request = json::parse(EvaluateRequest(7, "document.title + \"\\\"\n日本"));
  EXPECT_EQ(request["id"], 7);
  EXPECT_EQ(request["method"], "Runtime.evaluate");
  EXPECT_EQ(request["params"]["expression"], "document.title + \"\\\"\n日本");
  EXPECT_EQ(request["params"]["returnByValue"], true);
}

TEST(DevToolsEvaluate, BrokenUtf8InAnExpressionIsReplacedNotThrown) {
  const json request = json::parse(EvaluateRequest(1, "'\xff'"));
  EXPECT_EQ(request["params"]["expression"], "'\xef\xbf\xbd'");
}

TEST(DevToolsEvaluate, RepliesAreMatchedByTheirId) {
  EXPECT_EQ(MessageId(R"({"id": 12, "result": {}})"), 12);
  EXPECT_FALSE(MessageId(R"({"method": "Runtime.consoleAPICalled", "params": {}})"));
  EXPECT_FALSE(MessageId(R"({"id": "12"})"));
  EXPECT_FALSE(MessageId("[12]"));
  EXPECT_FALSE(MessageId("not json"));
}

TEST(DevToolsEvaluate, ValuesOfEveryKindAreReturned) {
  EXPECT_EQ(EvaluateValue(R"({"id":1,"result":{"result":{"type":"string","value":"complete"}}})"),
            json("complete"));
  EXPECT_EQ(EvaluateValue(R"({"id":1,"result":{"result":{"type":"boolean","value":true}}})"),
            json(true));
  EXPECT_EQ(
      EvaluateValue(R"({"id":1,"result":{"result":{"type":"object","value":[{"tag":"A"}]}}})"),
      json::parse(R"([{"tag":"A"}])"));
  // undefined carries no value.
  EXPECT_EQ(EvaluateValue(R"({"id":1,"result":{"result":{"type":"undefined"}}})"), json());
}

TEST(DevToolsEvaluate, ErrorsAndThrownExpressionsGiveNone) {
  EXPECT_FALSE(EvaluateValue(
      R"({"id":1,"error":{"code":-32000,"message":"Execution context was destroyed."}})"));
  EXPECT_FALSE(EvaluateValue(R"({"id":1,"result":{"result":{"type":"object","subtype":"error"},
      "exceptionDetails":{"text":"Uncaught","lineNumber":0}}})"));
  EXPECT_FALSE(EvaluateValue(R"({"id":1,"result":{}})"));
  EXPECT_FALSE(EvaluateValue(R"({"id":1,"result":{"result":"x"}})"));
  EXPECT_FALSE(EvaluateValue(R"({"id":1})"));
  EXPECT_FALSE(EvaluateValue("{\"id\":1,\"result\":"));
  EXPECT_FALSE(EvaluateValue("null"));
}

}  // namespace
}  // namespace kx::devtools

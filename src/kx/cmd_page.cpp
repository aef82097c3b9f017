// kx page: one page command line, or one document operation, against the
// most recently active tab of a Chromium browser listening for DevTools on a
// loopback port: the tab a "chrome" path means when no browser line of the
// play opened one.
#include <charconv>
#include <cstdio>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "kx/commands.h"
#include "kx/page_line.h"
#include "page/devtools/devtools_document.h"

namespace kx::cli {
namespace {

using nlohmann::json;

constexpr int kFailed = 1;
constexpr int kBadUsage = 2;

int Usage(const char* why) {
  std::fprintf(stderr, "kx page: %s\n", why);
  std::fputs(
      "usage: kx page --port N LINE\n"
      "       kx page --port N --dump | --ready | --eval EXPR | --set INDEX VALUE |\n"
      "                        --check INDEX 0|1 | --submit FORM | --submit-of INDEX\n",
      stderr);
  return kBadUsage;
}

template <typename Number>
std::optional<Number> ParseNumber(const std::string& text) {
  Number n{};
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, n);
  if (error != std::errc() || rest != end || text.empty()) return std::nullopt;
  return n;
}

std::string Dump(const json& value) {
  return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

int PrintElements(PageDocument& document) {
  const auto elements = document.Elements();
  if (!elements) return kFailed;
  json list = json::array();
  for (const PageElement& e : *elements)
    list.push_back({{"tag", e.tag},
                    {"type", e.type},
                    {"name", e.name},
                    {"value", e.value},
                    {"checked", e.checked}});
  std::printf("%s\n", Dump(list).c_str());
  return 0;
}

int PrintReadyState(PageDocument& document) {
  const std::string state = document.ReadyState();
  if (state.empty()) return kFailed;
  std::printf("%s\n", state.c_str());
  return 0;
}

int PrintEvaluation(int port, const std::string& expression) {
  const auto connection = devtools::DevToolsConnection::OpenPage(port);
  if (!connection) return kFailed;
  const auto value = connection->Evaluate(expression);
  if (!value) return kFailed;
  std::printf("%s\n", Dump(*value).c_str());
  return 0;
}

// One operation on the opened page, chosen by the option.
using Operation = std::function<int(PageDocument&)>;

int Outcome(bool done) {
  return done ? 0 : kFailed;
}

}  // namespace

int Page(const std::vector<std::string>& args) {
  std::optional<int> port;
  std::optional<Operation> operation;
  std::optional<std::string> line, expression;
  int chosen = 0;  // operations named; one is allowed
  auto index = [&](size_t i) { return ParseNumber<std::size_t>(args[i]); };
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const size_t left = args.size() - i - 1;
    if (a == "--port" && left >= 1) {
      port = ParseNumber<int>(args[++i]);
      if (!port) return Usage("--port needs a number");
    } else if (a == "--dump") {
      ++chosen;
      operation = PrintElements;
    } else if (a == "--ready") {
      ++chosen;
      operation = PrintReadyState;
    } else if (a == "--eval" && left >= 1) {
      ++chosen;
      expression = args[++i];
    } else if (a == "--set" && left >= 2) {
      ++chosen;
      const auto element = index(++i);
      if (!element) return Usage("--set needs an element index");
      const std::string value = args[++i];
      operation = [=](PageDocument& d) { return Outcome(d.SetValue(*element, value)); };
    } else if (a == "--check" && left >= 2) {
      ++chosen;
      const auto element = index(++i);
      const std::string& state = args[++i];
      if (!element || (state != "0" && state != "1")) return Usage("--check needs INDEX 0|1");
      const bool checked = state == "1";
      operation = [=](PageDocument& d) { return Outcome(d.SetChecked(*element, checked)); };
    } else if (a == "--submit" && left >= 1) {
      ++chosen;
      const auto form = index(++i);
      if (!form) return Usage("--submit needs a form index");
      operation = [=](PageDocument& d) { return Outcome(d.SubmitForm(*form)); };
    } else if (a == "--submit-of" && left >= 1) {
      ++chosen;
      const auto element = index(++i);
      if (!element) return Usage("--submit-of needs an element index");
      operation = [=](PageDocument& d) { return Outcome(d.SubmitFormOf(*element)); };
    } else if (!a.starts_with("--")) {
      ++chosen;
      line = a;
    } else {
      return Usage("unknown option");
    }
  }
  if (chosen > 1) return Usage("one operation only");
  if (!port) return Usage("no --port");
  if (expression) return PrintEvaluation(*port, *expression);
  devtools::DevToolsDocuments documents;
  if (line) return RunPageLine(*line, documents, *port);
  if (!operation) return Usage("nothing to do");
  const auto document = documents.FromDevTools(*port, {});
  if (!document) return kFailed;
  return (*operation)(*document);
}

}  // namespace kx::cli

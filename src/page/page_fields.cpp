#include "page/page_fields.h"

#include "util/basic_text.h"

namespace kx {

namespace {

constexpr std::string_view kComplete = "complete";
constexpr double kReadyPollMs = 10;
constexpr std::string_view kLineBreak = "\r\n";
constexpr std::string_view kEscapedLineBreak = "\\n";

bool IsInput(const PageElement& e) {
  return basic::LCase(e.tag) == "input";
}

// An input without a type attribute is a text box.
std::string InputType(const PageElement& e) {
  const std::string type = basic::LCase(e.type);
  return type.empty() ? "text" : type;
}

}  // namespace

std::vector<std::string> SplitPagePairs(std::string_view pairs) {
  std::vector<std::string> pieces = basic::Split(pairs, " / ");
  if (pieces.size() == 1) pieces = basic::Split(pairs, "/");
  return pieces;
}

std::optional<bool> PageBoolean(std::string_view value) {
  std::string word;
  for (char c : value)
    if (c != ' ') word.push_back(c);
  word = basic::LCase(word);
  if (word == "true") return true;
  if (word == "false") return false;
  if (const auto n = basic::ToDouble(value)) return *n != 0;
  return std::nullopt;
}

void AutoLogin(PageDocument& document, std::string_view user, std::string_view password) {
  const auto elements = document.Elements();
  if (!elements) return;
  std::optional<std::size_t> lastInput;
  std::optional<std::size_t> passwordBox;
  for (std::size_t i = 0; i < elements->size(); ++i) {
    const PageElement& e = (*elements)[i];
    if (!IsInput(e)) continue;
    if (basic::LCase(e.type) == "password") {
      if (!password.empty()) document.SetValue(i, password);
      if (!user.empty() && lastInput) document.SetValue(*lastInput, user);
      passwordBox = i;
    }
    lastInput = i;
  }
  if (passwordBox) document.SubmitFormOf(*passwordBox);
}

void FillPageFields(PageDocument& document, std::string_view pairs, std::string_view form) {
  const auto elements = document.Elements();
  if (!elements) return;
  for (const std::string& pair : SplitPagePairs(pairs)) {
    const auto eq = pair.find('=');
    if (eq == std::string::npos) continue;
    const std::string_view name = std::string_view(pair).substr(0, eq);
    const std::string_view value = std::string_view(pair).substr(eq + 1);
    for (std::size_t i = 0; i < elements->size(); ++i) {
      const PageElement& e = (*elements)[i];
      if (e.name != name) continue;
      const std::string type = basic::LCase(e.type);
      if (type == "hidden") continue;
      if (type == "checkbox") {
        if (const auto checked = PageBoolean(value)) document.SetChecked(i, *checked);
      } else {
        document.SetValue(i, basic::ReplaceAll(value, kEscapedLineBreak, kLineBreak));
      }
    }
  }
  const std::string_view index = basic::Trim(form);
  if (index.empty() || !basic::IsNumeric(index)) return;
  const auto n = basic::ToDouble(index);
  if (n && *n >= 0 && *n < 1e9) document.SubmitForm(static_cast<std::size_t>(*n));
}

bool WaitPageComplete(PageDocument& document, ClockPort& clock, const bool& playing) {
  for (;;) {
    const std::string state = document.ReadyState();
    if (state == kComplete) return true;
    if (state.empty() || !playing) return false;
    clock.PumpMessages();
    if (!playing) return false;
    clock.Sleep(kReadyPollMs);
  }
}

std::optional<std::string> CapturePageFields(PageDocument& document) {
  const auto elements = document.Elements();
  if (!elements) return std::nullopt;
  std::vector<std::string> pairs;
  for (const PageElement& e : *elements) {
    if (e.name.empty()) continue;
    const std::string tag = basic::LCase(e.tag);
    std::string value;
    if (tag == "input") {
      const std::string type = InputType(e);
      if (type == "checkbox")
        value = e.checked ? "True" : "False";
      else if (type == "text" || type == "password")
        value = e.value;
      else
        continue;
    } else if (tag == "select") {
      value = e.value;
    } else if (tag == "textarea") {
      value = basic::ReplaceAll(basic::ReplaceAll(e.value, kLineBreak, "\n"), "\r", "\n");
      value = basic::ReplaceAll(value, "\n", kEscapedLineBreak);
    } else {
      continue;
    }
    pairs.push_back(e.name + "=" + value);
  }
  if (pairs.empty()) return std::nullopt;
  std::string out;
  for (const auto& p : pairs) out += (out.empty() ? "" : " / ") + p;
  return out;
}

}  // namespace kx

#include "page/devtools/page_scripts.h"

namespace kx::devtools {
namespace {

using nlohmann::json;

// The element at a position of the document-order list; the scripts below
// are each one expression that calls a function on it with the element.
std::string OnElement(std::size_t element, std::string_view body) {
  return "((e) => { if (!e) return false; " + std::string(body) +
         " })(document.getElementsByTagName('*')[" + std::to_string(element) + "])";
}

// Pages listen for these to see a value a user typed; a script write alone
// fires neither.
constexpr std::string_view kNotify =
    "e.dispatchEvent(new Event('input', {bubbles: true})); "
    "e.dispatchEvent(new Event('change', {bubbles: true})); return true;";

// A form's own submit(), as a script's form.submit() does it: no submit
// event, no validation. Taken from the prototype because a field named
// "submit" hides the method on the form.
std::string SubmitCall(std::string_view form) {
  return "HTMLFormElement.prototype.submit.call(" + std::string(form) + "); return true;";
}

std::string Literal(std::string_view text) {
  return json(text).dump(-1, ' ', false, json::error_handler_t::replace);
}

std::string Text(const json& element, const char* key) {
  const auto field = element.find(key);
  return field != element.end() && field->is_string() ? field->get<std::string>() : std::string();
}

}  // namespace

std::string ElementsScript() {
  return "Array.from(document.getElementsByTagName('*'), (e) => ({"
         "tag: e.tagName, "
         "type: e.getAttribute('type') ?? '', "
         "name: e.getAttribute('name') ?? '', "
         "value: typeof e.value === 'string' ? e.value : '', "
         "checked: e.checked === true}))";
}

std::string SetValueScript(std::size_t element, std::string_view value) {
  return OnElement(element, "if (typeof e.value !== 'string') return false; e.value = " +
                                Literal(value) + "; " + std::string(kNotify));
}

std::string SetCheckedScript(std::size_t element, bool checked) {
  return OnElement(element, std::string("if (typeof e.checked !== 'boolean') return false; ") +
                                "e.checked = " + (checked ? "true" : "false") + "; " +
                                std::string(kNotify));
}

std::string SubmitFormScript(std::size_t form) {
  return "((f) => { if (!(f instanceof HTMLFormElement)) return false; " + SubmitCall("f") +
         " })(document.forms[" + std::to_string(form) + "])";
}

std::string SubmitFormOfScript(std::size_t element) {
  return OnElement(
      element, "if (!(e.form instanceof HTMLFormElement)) return false; " + SubmitCall("e.form"));
}

std::optional<std::vector<PageElement>> ReadElements(const json& value) {
  if (!value.is_array()) return std::nullopt;
  std::vector<PageElement> elements;
  elements.reserve(value.size());
  for (const json& e : value) {
    if (!e.is_object()) return std::nullopt;
    const auto checked = e.find("checked");
    elements.push_back({Text(e, "tag"), Text(e, "type"), Text(e, "name"), Text(e, "value"),
                        checked != e.end() && checked->is_boolean() && checked->get<bool>()});
  }
  return elements;
}

}  // namespace kx::devtools

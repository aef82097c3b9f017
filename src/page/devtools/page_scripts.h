#pragma once
// The JavaScript a DevTools page document evaluates in the page, and the
// reading of what it returns. Elements are addressed by their position in
// document.getElementsByTagName('*'), the same order Elements() lists them.
#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sys/document_port.h"

namespace kx::devtools {

// Every element as {tag, type, name, value, checked}, in document order.
std::string ElementsScript();
// Each returns true when the write or the submit happened, false otherwise.
std::string SetValueScript(std::size_t element, std::string_view value);
std::string SetCheckedScript(std::size_t element, bool checked);
std::string SubmitFormScript(std::size_t form);
std::string SubmitFormOfScript(std::size_t element);

// The element list from the value ElementsScript() returned; none when the
// value is not such a list.
std::optional<std::vector<PageElement>> ReadElements(const nlohmann::json& value);

}  // namespace kx::devtools

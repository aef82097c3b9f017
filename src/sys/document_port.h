#pragma once
// The HTML document of a browser page, for the page commands and the capture
// tool. A document is a snapshot-and-write interface: the element list is read
// in document order, and values are written back by the element's position in
// that list, so the same walks run on an Internet Explorer engine document, a
// Chromium page reached over its DevTools port, and an in-memory test page.
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sys/geometry.h"

namespace kx {

struct PageElement {
  std::string tag;   // tag name as the page gives it ("INPUT", "input", ...)
  std::string type;  // the type attribute ("" when the element has none)
  std::string name;  // the name attribute ("" when the element has none)
  std::string value;
  bool checked = false;
};

class PageDocument {
 public:
  virtual ~PageDocument() = default;
  // The document's ReadyState ("loading", "interactive", "complete"); empty
  // when the document can no longer be read (the page or browser has gone).
  virtual std::string ReadyState() = 0;
  // Every element in document order; none when the document has gone.
  virtual std::optional<std::vector<PageElement>> Elements() = 0;
  // Writes by the element's position in Elements(); false when it failed.
  virtual bool SetValue(std::size_t element, std::string_view value) = 0;
  virtual bool SetChecked(std::size_t element, bool checked) = 0;
  // Submits the form at that index of the document's forms collection.
  virtual bool SubmitForm(std::size_t form) = 0;
  // Submits the form the element belongs to.
  virtual bool SubmitFormOf(std::size_t element) = 0;
};

class DocumentPort {
 public:
  virtual ~DocumentPort() = default;
  // The document of an Internet Explorer engine window; none when the window
  // does not answer within a second or shows no such document.
  virtual std::unique_ptr<PageDocument> FromWindow(WindowHandle window) = 0;
  // A tab of the Chromium browser listening for DevTools on that loopback
  // port: the one with that id, or with an empty id the browser's most
  // recently active one. None when no browser answers there or the tab has
  // gone.
  virtual std::unique_ptr<PageDocument> FromDevTools(int port, std::string_view tab) = 0;
};

}  // namespace kx

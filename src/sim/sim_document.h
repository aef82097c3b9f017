#pragma once
// In-memory pages for the simulated system: a list of elements with the form
// each belongs to, a ready state that can take some reads to become
// "complete", and a switch that makes the page vanish as a closed browser's
// would.
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sim/trace.h"
#include "sys/document_port.h"

namespace kx::sim {

struct SimPageElement {
  PageElement element;
  int form = -1;  // index in the page's forms; -1: outside any form
};

struct SimPage {
  std::vector<SimPageElement> elements;
  int formCount = 0;
  // Reads of ReadyState that give "loading" before the page is "complete".
  int loadingReads = 0;
  bool gone = false;           // the page or its browser has closed
  std::vector<int> submitted;  // form indices, in the order they were sent
};

inline SimPage MakeSimPage(std::vector<SimPageElement> elements, int formCount) {
  SimPage page;
  page.elements = std::move(elements);
  page.formCount = formCount;
  return page;
}

// A page seen through the document interface. Writes go to the page and
// into the trace through `record`, tagged with `source` ({"hwnd":n} or
// {"port":n}).
std::unique_ptr<PageDocument> MakeSimDocument(SimPage& page, Json source,
                                              std::function<void(std::string_view, Json)> record);

}  // namespace kx::sim

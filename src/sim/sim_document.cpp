#include "sim/sim_document.h"

namespace kx::sim {

namespace {

class SimDocument final : public PageDocument {
 public:
  SimDocument(SimPage& page, Json source, std::function<void(std::string_view, Json)> record)
      : page_(page), source_(std::move(source)), record_(std::move(record)) {}

  std::string ReadyState() override {
    if (page_.gone) return "";
    if (page_.loadingReads > 0) {
      --page_.loadingReads;
      return "loading";
    }
    return "complete";
  }

  std::optional<std::vector<PageElement>> Elements() override {
    if (page_.gone) return std::nullopt;
    std::vector<PageElement> out;
    for (const auto& e : page_.elements) out.push_back(e.element);
    return out;
  }

  bool SetValue(std::size_t element, std::string_view value) override {
    if (page_.gone || element >= page_.elements.size()) return false;
    PageElement& e = page_.elements[element].element;
    e.value = std::string(value);
    Record("page_value", {{"element", element}, {"name", e.name}, {"value", value}});
    return true;
  }

  bool SetChecked(std::size_t element, bool checked) override {
    if (page_.gone || element >= page_.elements.size()) return false;
    PageElement& e = page_.elements[element].element;
    e.checked = checked;
    Record("page_checked", {{"element", element}, {"name", e.name}, {"checked", checked}});
    return true;
  }

  bool SubmitForm(std::size_t form) override {
    if (page_.gone || form >= static_cast<std::size_t>(page_.formCount)) return false;
    page_.submitted.push_back(static_cast<int>(form));
    Record("page_submit", {{"form", form}});
    return true;
  }

  bool SubmitFormOf(std::size_t element) override {
    if (page_.gone || element >= page_.elements.size()) return false;
    const int form = page_.elements[element].form;
    if (form < 0) return false;
    return SubmitForm(static_cast<std::size_t>(form));
  }

 private:
  void Record(std::string_view ev, Json fields) {
    Json all = source_;
    for (auto& [k, v] : fields.items()) all[k] = v;
    record_(ev, std::move(all));
  }

  SimPage& page_;
  Json source_;
  std::function<void(std::string_view, Json)> record_;
};

}  // namespace

std::unique_ptr<PageDocument> MakeSimDocument(SimPage& page, Json source,
                                              std::function<void(std::string_view, Json)> record) {
  return std::make_unique<SimDocument>(page, std::move(source), std::move(record));
}

}  // namespace kx::sim

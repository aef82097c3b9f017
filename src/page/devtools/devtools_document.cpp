#include "page/devtools/devtools_document.h"

#include <utility>

#include "page/devtools/page_scripts.h"

namespace kx::devtools {
namespace {

constexpr std::string_view kLoading = "loading";

class DevToolsDocument final : public PageDocument {
 public:
  explicit DevToolsDocument(std::unique_ptr<DevToolsConnection> connection)
      : connection_(std::move(connection)) {}

  std::string ReadyState() override {
    const auto state = connection_->Evaluate("document.readyState");
    if (state && state->is_string()) return state->get<std::string>();
    // An error answer while the page is up comes from a page between two
    // documents (its context was just replaced): still loading, not gone.
    return connection_->Connected() ? std::string(kLoading) : std::string();
  }

  std::optional<std::vector<PageElement>> Elements() override {
    const auto list = connection_->Evaluate(ElementsScript());
    if (!list) return std::nullopt;
    return ReadElements(*list);
  }

  bool SetValue(std::size_t element, std::string_view value) override {
    return Succeeded(SetValueScript(element, value));
  }
  bool SetChecked(std::size_t element, bool checked) override {
    return Succeeded(SetCheckedScript(element, checked));
  }
  bool SubmitForm(std::size_t form) override { return Succeeded(SubmitFormScript(form)); }
  bool SubmitFormOf(std::size_t element) override { return Succeeded(SubmitFormOfScript(element)); }

 private:
  bool Succeeded(const std::string& script) {
    const auto outcome = connection_->Evaluate(script);
    return outcome && *outcome == true;
  }

  std::unique_ptr<DevToolsConnection> connection_;
};

}  // namespace

std::unique_ptr<PageDocument> OpenPage(int port, std::string_view tab, const Timeouts& timeouts) {
  auto connection = DevToolsConnection::OpenPage(port, tab, timeouts);
  if (!connection) return nullptr;
  return std::make_unique<DevToolsDocument>(std::move(connection));
}

std::unique_ptr<PageDocument> DevToolsDocuments::FromWindow(WindowHandle) {
  return nullptr;
}

std::unique_ptr<PageDocument> DevToolsDocuments::FromDevTools(int port, std::string_view tab) {
  return OpenPage(port, tab);
}

}  // namespace kx::devtools

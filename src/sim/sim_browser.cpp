#include "sim/sim_browser.h"

#include <charconv>

#include "util/basic_text.h"

namespace kx::sim {

namespace {

constexpr std::string_view kPortArgument = "--remote-debugging-port=";

std::optional<int> PortArgument(std::string_view arguments) {
  const auto at = arguments.find(kPortArgument);
  if (at == std::string_view::npos) return std::nullopt;
  const std::string_view rest = arguments.substr(at + kPortArgument.size());
  int port = 0;
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), port);
  if (error != std::errc()) return std::nullopt;
  return port;
}

// The last blank-separated argument: the address a browser opens.
std::string LastArgument(std::string_view arguments) {
  const std::string_view trimmed = basic::Trim(arguments);
  const auto blank = trimmed.rfind(' ');
  return std::string(blank == std::string_view::npos ? trimmed : trimmed.substr(blank + 1));
}

}  // namespace

SimPage& SimBrowsers::AddTab(int port, std::string url, SimPage page) {
  auto& tabs = browsers_[port];
  tabs.push_front({"tab-" + std::to_string(nextTab_++), std::move(url), std::move(page)});
  return tabs.front().page;
}

void SimBrowsers::CloseBrowser(int port) {
  const auto it = browsers_.find(port);
  if (it == browsers_.end()) return;
  for (SimTab& tab : it->second) tab.page.gone = true;
  // The tabs stay in memory (documents opened on them hold references) but
  // the port no longer answers.
  closed_.splice(closed_.end(), it->second);
  browsers_.erase(it);
}

SimTab* SimBrowsers::Tab(int port, std::string_view id) {
  const auto it = browsers_.find(port);
  if (it == browsers_.end()) return nullptr;
  for (SimTab& tab : it->second)
    if (!tab.page.gone && (id.empty() || tab.id == id)) return &tab;
  return nullptr;
}

PortAnswer SimBrowsers::Probe(int port) {
  if (others_.count(port)) return PortAnswer::kOther;
  return browsers_.count(port) ? PortAnswer::kBrowser : PortAnswer::kNothing;
}

std::optional<std::string> SimBrowsers::OpenTab(int port, std::string_view url) {
  if (Probe(port) != PortAnswer::kBrowser) return std::nullopt;
  const auto page = web_.find(url);
  AddTab(port, std::string(url), page == web_.end() ? SimPage{} : page->second);
  record_("open_tab", {{"port", port}, {"url", url}});
  return browsers_[port].front().id;
}

std::optional<std::string> SimBrowsers::ActiveTab(int port) {
  if (Probe(port) != PortAnswer::kBrowser) return std::nullopt;
  if (SimTab* tab = Tab(port, {})) return tab->id;
  return std::nullopt;
}

std::optional<TabState> SimBrowsers::ReadTab(int port, std::string_view id) {
  if (Probe(port) != PortAnswer::kBrowser) return std::nullopt;
  SimTab* tab = Tab(port, id);
  if (!tab) return std::nullopt;
  SimPage& page = tab->page;
  if (page.loadingReads > 0) {
    --page.loadingReads;
    return TabState{tab->url, "loading"};
  }
  return TabState{tab->url, "complete"};
}

bool SimBrowsers::Launch(std::string_view program, std::string_view arguments) {
  const bool ok = files_.IsFile(program);
  record_("launch", {{"program", program}, {"arguments", arguments}, {"ok", ok}});
  if (!ok || !browserPrograms_.count(program)) return ok;
  const auto port = PortArgument(arguments);
  if (!port || Probe(*port) != PortAnswer::kNothing) return ok;
  const std::string url = LastArgument(arguments);
  const auto page = web_.find(url);
  AddTab(*port, url, page == web_.end() ? SimPage{} : page->second);
  return ok;
}

std::string SimBrowsers::InstalledProgram(std::string_view exeName) {
  const auto it = appPaths_.find(exeName);
  return it == appPaths_.end() ? std::string() : it->second;
}

}  // namespace kx::sim

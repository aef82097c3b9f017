#pragma once
// Simulated browsers on loopback ports: the tabs each shows (most recently
// active first), programs that are not browsers holding a port, the App Paths
// of installed browsers and the programs that start a browser when launched.
#include <functional>
#include <list>
#include <map>
#include <set>
#include <string>

#include "sim/sim_document.h"
#include "sys/browser_port.h"
#include "sys/file_port.h"

namespace kx::sim {

struct SimTab {
  std::string id;
  std::string url;
  SimPage page;
};

class SimBrowsers final : public BrowserPort {
 public:
  using Recorder = std::function<void(std::string_view, Json)>;
  SimBrowsers(FilePort& files, Recorder record) : files_(files), record_(std::move(record)) {}

  // --- set-up ---
  // A new tab, now the most recently active, in the browser on the port (one
  // is started there when none runs). The reference stays valid.
  SimPage& AddTab(int port, std::string url, SimPage page = {});
  // A program that is not a browser answers on the port.
  void OccupyPort(int port) { others_.insert(port); }
  // The browser on the port closes: its tabs are gone and the port is free.
  void CloseBrowser(int port);
  // An App Paths entry, as an installer writes it.
  void RegisterAppPath(std::string exeName, std::string path) {
    appPaths_[std::move(exeName)] = std::move(path);
  }
  // Launching this file starts a browser on the port of its
  // "--remote-debugging-port=" argument, showing its last argument.
  void AddBrowserProgram(std::string path) { browserPrograms_.insert(std::move(path)); }
  // What a tab shows when it opens that address; other addresses show an
  // empty page that is complete at once.
  void AddWebPage(std::string url, SimPage page) { web_[std::move(url)] = std::move(page); }
  // The tab with that id, or with an empty id the most recently active one;
  // null when there is none.
  SimTab* Tab(int port, std::string_view id);

  // --- BrowserPort ---
  PortAnswer Probe(int port) override;
  std::optional<std::string> OpenTab(int port, std::string_view url) override;
  std::optional<std::string> ActiveTab(int port) override;
  std::optional<TabState> ReadTab(int port, std::string_view tab) override;
  bool Launch(std::string_view program, std::string_view arguments) override;
  std::string InstalledProgram(std::string_view exeName) override;

 private:
  FilePort& files_;
  Recorder record_;
  std::map<int, std::list<SimTab>> browsers_;
  std::list<SimTab> closed_;  // tabs of closed browsers, kept for the documents on them
  std::set<int> others_;
  std::map<std::string, std::string, std::less<>> appPaths_;
  std::set<std::string, std::less<>> browserPrograms_;
  std::map<std::string, SimPage, std::less<>> web_;
  int nextTab_ = 1;
};

}  // namespace kx::sim

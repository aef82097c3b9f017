#pragma once
// The main window's logic on the simulated system: a recording window, the
// settings file in memory, folders, hotkeys and the other instance.
#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "gui/main_controller.h"
#include "settings/ini_store.h"
#include "sim/sim_hooks.h"
#include "sim/sim_main_view.h"
#include "sim/sim_system.h"
#include "text/macro_text.h"

namespace kx::test {

// Folders as a set of file paths; folders exist where a file lies below.
class MemoryFolders final : public FolderPort {
 public:
  explicit MemoryFolders(sim::SimSystem& sim) : sim_(sim) {}
  void Add(const std::string& path, const std::string& contents = "") {
    paths_.insert(path);
    sim_.AddFile(path, contents);
  }
  std::vector<FolderEntry> List(std::string_view folder) override {
    const std::string prefix = std::string(folder) + "/";
    std::map<std::string, bool> entries;
    for (const auto& p : paths_) {
      if (p.rfind(prefix, 0) != 0) continue;
      const std::string rest = p.substr(prefix.size());
      const auto slash = rest.find('/');
      entries[rest.substr(0, slash)] = slash != std::string::npos;
    }
    std::vector<FolderEntry> out;
    for (const auto& [name, folderEntry] : entries) out.push_back({name, folderEntry});
    return out;
  }
  bool DeleteFile(std::string_view path) override {
    deleted.emplace_back(path);
    return paths_.erase(std::string(path)) > 0;
  }
  bool IsFolder(std::string_view) override { return false; }
  std::vector<std::string> deleted;

 private:
  sim::SimSystem& sim_;
  std::set<std::string> paths_;
};

class MemoryHotkeys final : public gui::HotkeyPort {
 public:
  bool Register(int id, int modifiers, int key) override {
    if (refuse.count(id)) return false;
    registered[id] = {modifiers, key};
    return true;
  }
  void Unregister(int id) override { registered.erase(id); }
  std::map<int, std::pair<int, int>> registered;
  std::set<int> refuse;
};

class OtherInstance final : public gui::InstancePort {
 public:
  bool OtherInstanceRunning() override { return running; }
  void RaiseOtherInstance() override { ++raised; }
  bool running = false;
  int raised = 0;
};

class GuiFixture {
 public:
  static constexpr char kIni[] = "/kestrelix/setting.ini";

  GuiFixture() {
    sim.SetHotkeySink([this](int id) {
      if (auto it = midPlay.find(id); it != midPlay.end())
        it->second();
      else
        controller.OnHotkey(id);
    });
  }

  // The settings file as text, "" when it does not exist.
  std::string IniText() {
    const auto bytes = sim.ReadAll(kIni);
    return bytes ? DecodeMacroBytes(*bytes) : "";
  }
  void WriteIni(const std::string& lines) { sim.AddFile(kIni, "[Macro]\r\n" + lines); }
  // The fields of the last trace event of a kind, as JSON text without the
  // braces; empty when there is none.
  std::string LastFields(std::string_view kind) {
    const auto events = sim.trace().OfKind(kind);
    if (events.empty()) return "";
    const std::string text = sim::DumpJson(events.back().fields);
    return text.substr(1, text.size() - 2);
  }
  int MenuId(gui::Command command, std::string_view argument = {}) {
    return gui::MenuIdFor(command, argument).value_or(-1);
  }
  bool Checked(std::string_view option) {
    return view.checks[MenuId(gui::Command::kToggleOption, option)];
  }
  // Runs `action` when the play's pump reaches virtual time `atMs`.
  void DuringPlay(std::int64_t atMs, std::function<void()> action) {
    const int id = 9000 + static_cast<int>(midPlay.size());
    midPlay[id] = std::move(action);
    sim.ScheduleHotkey(atMs, id);
  }

  sim::SimSystem sim;
  sim::SimMainView view;
  IniStore store{sim, kIni};
  MemoryFolders folders{sim};
  MemoryHotkeys hotkeys;
  OtherInstance instance;
  sim::SimRecorderHooks recorderHooks{sim};
  gui::MainController controller{{sim.Ports(), store, folders, hotkeys, instance, recorderHooks},
                                 view};
  std::map<int, std::function<void()>> midPlay;
};

}  // namespace kx::test

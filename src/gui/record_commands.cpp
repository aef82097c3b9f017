// Recording: the record button, menu item, hotkey and "/rec" start and stop
// the recorder; its timers and hooks feed it while it runs, and what it
// writes goes to the end of the editor.
//
// The player and the recorder never run together. While a macro plays, the
// record button is disabled, the menu item and the hotkey are refused, and
// no recorder tick or hook event does anything; starting a play (button,
// menu, Play or Stop hotkey) ends a running recording first.
//
// With PreciseRec the hooks' key and button events make the lines and the
// sampling tick only hands them to the editor; without it the keyboard hook
// counts the presses the sampling could not record, and the end of the
// recording says how many.
#include <string>

#include "gui/main_controller.h"

namespace kx::gui {

namespace {

// The hooks come only after this pause, so that the click or key that
// started the recording is over.
constexpr double kHookDelayMs = 200;

constexpr std::string_view kNoPreciseHooks =
    "高精度記録に必要なフックを使えないため、通常の方法で記録しています";

std::string UnrecordedMessage(int presses) {
  return std::to_string(presses) +
         " 個のキー操作を記録できませんでした (高精度記録(&P) で記録できます)";
}

}  // namespace

void MainController::Record() {
  if (recording_)
    StopRecording();
  else
    StartRecording();
}

void MainController::StartRecording() {
  if (recording_ || player_.Playing()) return;
  recording_ = true;
  preciseRecording_ = false;
  view_.SetButtonCaption(Button::kRecord, "終了");
  if (settings_.hide) view_.SetEditorMode(EditorMode::kHidden);
  const RecorderOptions options =
      RecorderOptionsFromSettings(settings_, ports_.system.clock.HasPerformanceCounter());
  // Both count their first wait from here.
  recorder_.Start(options, mainWindow_);
  precise_.Start(options, mainWindow_);
  view_.StartTimer(Timer::kRecorder, kSamplingIntervalMs);
  ports_.system.clock.Sleep(kHookDelayMs);
  const bool hooked = ports_.recorderHooks.Install(*this);
  preciseRecording_ = settings_.preciseRec && hooked;
  if (settings_.preciseRec && !hooked) ShowStatus(kNoPreciseHooks);
}

void MainController::StopRecording() {
  if (!recording_) return;
  // The recording ends with the releases it owes: nothing replays held.
  AppendRecorded(preciseRecording_ ? precise_.Stop() : recorder_.Stop());
  recording_ = false;
  // The sampling timer goes on for a rapid-fire mode that watches keys.
  const RapidMode rapid = rapid_.Mode();
  if (rapid != RapidMode::kKeyStartStop && rapid != RapidMode::kMouseStartStop)
    view_.StopTimer(Timer::kRecorder);
  ports_.recorderHooks.Remove();
  view_.SetButtonCaption(Button::kRecord, "記録");
  // Shown again also when `Hide` was switched off during the recording.
  view_.SetEditorMode(editorMode_);
  if (!preciseRecording_)
    if (const int missed = recorder_.UnrecordedPresses(); missed > 0)
      ShowStatus(UnrecordedMessage(missed));
  preciseRecording_ = false;
}

void MainController::RecorderTick() {
  // A tick may pump messages (a left click with MouCl); a second tick, or
  // a stop, may arrive inside it.
  if (!recording_ || recorderTicking_) return;
  if (preciseRecording_) {
    AppendRecorded(precise_.Drain());
    return;
  }
  recorderTicking_ = true;
  const std::string text = recorder_.Tick();
  recorderTicking_ = false;
  AppendRecorded(text);
}

void MainController::AppendRecorded(const std::string& text) {
  if (recording_ && !text.empty()) view_.AppendEditorText(text);
}

// Rapid fire's own keys and clicks are not the user's: the sampling tick
// records nothing while a mode is on, and neither do the hooks.
bool MainController::RecordHookEvent() const {
  return rapid_.Mode() == RapidMode::kOff;
}

void MainController::OnHookMouseMove(Point screen, std::uint32_t time) {
  if (!recording_) return;
  if (preciseRecording_)
    precise_.OnMouseMove(screen, time, RecordHookEvent());
  else
    AppendRecorded(recorder_.OnMouseMove(screen));
}

void MainController::OnHookWheel(int delta, std::uint32_t time) {
  if (!recording_) return;
  if (preciseRecording_)
    precise_.OnWheel(delta, time, RecordHookEvent());
  else
    AppendRecorded(recorder_.OnWheel(delta));
}

void MainController::OnHookKey(const HookKey& key) {
  if (!recording_) return;
  if (preciseRecording_) {
    precise_.OnKey(key, RecordHookEvent());
    return;
  }
  recorder_.OnKey(key.vk, key.message, key.altDown);
  recorder_.CountHookKey(key.vk, key.message, RecordHookEvent());
}

// Without PreciseRec the sampling tick reads the buttons itself.
void MainController::OnHookButton(const HookButton& button) {
  if (recording_ && preciseRecording_) precise_.OnButton(button, RecordHookEvent());
}

}  // namespace kx::gui

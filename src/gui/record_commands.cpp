// Recording: the record button, menu item, hotkey and "/rec" start and stop
// the recorder; its timers and hooks feed it while it runs, and what it
// writes goes to the end of the editor.
//
// The player and the recorder never run together. While a macro plays, the
// record button is disabled, the menu item and the hotkey are refused, and
// no recorder tick or hook event does anything; starting a play (button,
// menu, Play or Stop hotkey) ends a running recording first.
#include "gui/main_controller.h"

namespace kx::gui {

namespace {

// The hooks come only after this pause, so that the click or key that
// started the recording is over.
constexpr double kHookDelayMs = 200;

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
  view_.SetButtonCaption(Button::kRecord, "終了");
  if (settings_.hide) view_.SetEditorMode(EditorMode::kHidden);
  recorder_.Start(
      RecorderOptionsFromSettings(settings_, ports_.system.clock.HasPerformanceCounter()),
      mainWindow_);
  view_.StartTimer(Timer::kRecorder, kSamplingIntervalMs);
  ports_.system.clock.Sleep(kHookDelayMs);
  ports_.recorderHooks.Install(*this);
}

void MainController::StopRecording() {
  if (!recording_) return;
  AppendRecorded(recorder_.Stop());
  recording_ = false;
  // The sampling timer goes on for a rapid-fire mode that watches keys.
  const RapidMode rapid = rapid_.Mode();
  if (rapid != RapidMode::kKeyStartStop && rapid != RapidMode::kMouseStartStop)
    view_.StopTimer(Timer::kRecorder);
  ports_.recorderHooks.Remove();
  view_.SetButtonCaption(Button::kRecord, "記録");
  // Shown again also when `Hide` was switched off during the recording.
  view_.SetEditorMode(editorMode_);
}

void MainController::RecorderTick() {
  // A tick may pump messages (a left click with MouCl); a second tick, or
  // a stop, may arrive inside it.
  if (!recording_ || recorderTicking_) return;
  recorderTicking_ = true;
  const std::string text = recorder_.Tick();
  recorderTicking_ = false;
  AppendRecorded(text);
}

void MainController::AppendRecorded(const std::string& text) {
  if (recording_ && !text.empty()) view_.AppendEditorText(text);
}

void MainController::OnHookMouseMove(Point screen) {
  if (recording_) AppendRecorded(recorder_.OnMouseMove(screen));
}

void MainController::OnHookWheel(int delta) {
  if (recording_) AppendRecorded(recorder_.OnWheel(delta));
}

void MainController::OnHookKey(int vk, int message, bool altDown) {
  if (recording_) recorder_.OnKey(vk, message, altDown);
}

}  // namespace kx::gui

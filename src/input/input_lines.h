#pragma once
// Key, chord, typing, pointer, button and wheel lines turned into input.
#include <string>
#include <string_view>
#include <vector>

#include "input/input_queue.h"
#include "input/key_names.h"
#include "sys/system.h"

namespace kx {

// The mouse line forms as the recorder writes them and the player reads them
// ("LMouse Down (x,y)", ..., "MousePos(x,y)", "Wheel n"), for the key-name
// list shipped with the program.
std::vector<std::string> MouseLineForms();

class InputLines {
 public:
  InputLines(System& sys, InputQueue& queue, bool unicodeKeys = false)
      : sys_(sys), queue_(queue), unicodeKeys_(unicodeKeys) {}

  // A key line's code: pseudo codes hold or release a modifier, print screen
  // presses the snapshot key and waits, other codes 1-255 press and release.
  void PressKey(KeyCode code);
  // "keys a+b+c": every known key down in order, up in reverse, one batch.
  void PressKeys(std::string_view names);
  // "key text": one chord per character, Shift added where needed. A
  // character the layout cannot type is skipped, or with Unicode keys on sent
  // as a Unicode key event.
  void TypeText(std::string_view text);
  // Pointer placement from "(x,y)" in screen or foreground-client pixels;
  // malformed coordinates leave the pointer where it is.
  void MoveScreen(std::string_view text);
  void MoveClient(std::string_view text);
  void MoveToScreenCentre();
  // "lmouse down (x,y)" and the like, on the lower-cased key.
  void PlayMouseLine(std::string_view key);
  // "wheel n" with the amount text as written after the word. A wheel of many
  // notches pumps messages after each and ends as soon as `playing` is false.
  void Wheel(std::string_view amount, const bool& playing);
  // "capslock on/off", "numlock on/off": presses the key only when its
  // toggle state is exactly the opposite.
  void SetLockKey(int vk, std::string_view word);
  // Waits on the millisecond timer, pumping messages.
  void WaitMs(int milliseconds);

 private:
  System& sys_;
  InputQueue& queue_;
  bool unicodeKeys_;
};

}  // namespace kx

#pragma once
// The clipboard in its Unicode text format; text is UTF-8 on this side.
#include <optional>
#include <string>
#include <string_view>

namespace kx {

class ClipboardPort {
 public:
  virtual ~ClipboardPort() = default;
  // Nothing when the clipboard holds no text or cannot be opened.
  virtual std::optional<std::string> GetText() = 0;
  virtual bool SetText(std::string_view text) = 0;
};

}  // namespace kx

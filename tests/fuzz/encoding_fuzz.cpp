// Feeds arbitrary bytes to encoding detection and conversion as the editor
// reads a macro file, saves the text as the editor does, and reads it back:
// the saved file must come back as the same text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "sim/sim_system.h"
#include "text/encoding_judge.h"
#include "text/macro_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const kx::Bytes bytes(data, data + size);
  (void)kx::JudgeCode(bytes);
  const std::string text = kx::DecodeMacroBytes(bytes);

  kx::sim::SimSystem sim;
  if (!kx::sWriteText(sim, "/m.ksx", text)) std::abort();
  const auto again = kx::ReadMacroFile(sim, "/m.ksx");
  if (!again || *again != text) std::abort();
  return 0;
}

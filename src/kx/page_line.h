#pragma once
// The seam between `kx page LINE` and the player's page commands: runs one
// page command line (pw, ip, waitweb) whose browser path is reached through
// the DevTools port given. Returns the process exit code.
#include <string>

#include "sys/document_port.h"

namespace kx::cli {

int RunPageLine(const std::string& line, DocumentPort& documents, int port);

}  // namespace kx::cli

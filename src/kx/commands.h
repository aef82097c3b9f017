#pragma once
// The sub-commands of kx; each returns the process exit code.
#include <string>
#include <vector>

namespace kx::cli {

int Run(const std::vector<std::string>& args);
int Eval(const std::vector<std::string>& args);
int Detect(const std::vector<std::string>& args);
int Decode(const std::vector<std::string>& args);
int Save(const std::vector<std::string>& args);
int Explain(const std::vector<std::string>& args);
int Lint(const std::vector<std::string>& args);
int Tidy(const std::vector<std::string>& args);
int KeyNames(const std::vector<std::string>& args);
int Page(const std::vector<std::string>& args);
int FindImage(const std::vector<std::string>& args);

}  // namespace kx::cli

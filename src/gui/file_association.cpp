#include "gui/file_association.h"

#include <array>

namespace kx::gui {

namespace {

// Below the class, deepest first: a key with sub-keys cannot be deleted.
constexpr std::array<std::string_view, 4> kClassSubKeysDeepestFirst{
    "\\Shell\\open\\command", "\\Shell\\open", "\\Shell", "\\DefaultIcon"};

std::string ExtensionKey() {
  return std::string(".") + kMacroExtension;
}

}  // namespace

std::string AssociationClassName(std::string_view extension) {
  if (!extension.empty() && extension.front() == '.') extension.remove_prefix(1);
  std::string name(extension);
  for (char& c : name)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return name + "_auto_file";
}

bool AssociateMacroFiles(RegistryPort& registry, std::string_view programPath) {
  const std::string className = AssociationClassName(kMacroExtension);
  if (!registry.SetClassKey(ExtensionKey(), className)) return false;
  const std::string program(programPath);
  registry.SetClassKey(className, kMacroFileDescription);
  registry.SetClassKey(className + "\\DefaultIcon",
                       program + "," + std::to_string(kMacroFileIconIndex));
  registry.SetClassKey(className + "\\Shell\\open\\command", program + " \"%1\"");
  registry.NotifyAssociationChanged();
  return true;
}

void RemoveMacroFileAssociation(RegistryPort& registry) {
  const std::string className = AssociationClassName(kMacroExtension);
  for (const std::string_view sub : kClassSubKeysDeepestFirst)
    registry.DeleteClassKey(className + std::string(sub));
  registry.DeleteClassKey(className);
  registry.DeleteClassKey(ExtensionKey());
  registry.NotifyAssociationChanged();
}

}  // namespace kx::gui

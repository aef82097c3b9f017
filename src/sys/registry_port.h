#pragma once
// The registry, as far as the program writes it.
#include <string_view>

namespace kx {

class RegistryPort {
 public:
  virtual ~RegistryPort() = default;
  // Sets "LastKey" of the registry editor's applet key for the current user, so
  // that the editor opens there. False when the key cannot be written.
  virtual bool SetRegeditLastKey(std::string_view path) = 0;

  // File classes of the current user (HKEY_CURRENT_USER\Software\Classes,
  // which the system merges into HKEY_CLASSES_ROOT for that user); sub-keys
  // are separated by "\". Creates the key (and the keys above it) and sets
  // its default value; false when it cannot be written.
  virtual bool SetClassKey(std::string_view subKey, std::string_view defaultValue) = 0;
  // Deletes one key that has no sub-keys; false when it could not be deleted
  // (it does not exist, or still has sub-keys).
  virtual bool DeleteClassKey(std::string_view subKey) = 0;
  // Tells the shell that file associations changed.
  virtual void NotifyAssociationChanged() = 0;
};

}  // namespace kx

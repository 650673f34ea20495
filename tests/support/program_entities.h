#ifndef TESSARIL_TESTS_SUPPORT_PROGRAM_ENTITIES_H_
#define TESSARIL_TESTS_SUPPORT_PROGRAM_ENTITIES_H_

#include <stdexcept>

#include "engine/disk_files.h"
#include "engine/entities.h"

namespace tessaril {

/// The entities that the program comes with.
inline const Entities& ProgramEntities() {
  static const Entities entities = [] {
    DiskFiles files;
    Entities loaded;
    std::vector<std::string> notices;
    if (!loaded.Load(files, ENTITY_DATA, notices).ok() || !notices.empty()) throw std::runtime_error("data");
    return loaded;
  }();
  return entities;
}

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_PROGRAM_ENTITIES_H_

#ifndef TESSARIL_UI_FRAME_REGISTRY_H_
#define TESSARIL_UI_FRAME_REGISTRY_H_

#include <QString>
#include <cstdint>

namespace tessaril {

/// The registry of a platform that has one, which is Windows only.
class Registry {
 public:
  virtual ~Registry() = default;

  /// The root of what holds for the whole machine.
  static constexpr std::uint32_t kLocalMachine = 0x80000002;

  /// Reads the text value `SubKeyRef` of the key `KeyName` below `KeyRoot`. On failure false, and `KeyVal` is
  /// empty.
  virtual bool GetKeyValue(std::uint32_t KeyRoot, const QString& KeyName, const QString& SubKeyRef,
                           QString& KeyVal) const = 0;
};

/// The path of the system information tool by what a registry says; empty when it names none.
QString SysInfoToolOf(const Registry& registry);

}  // namespace tessaril

#endif  // TESSARIL_UI_FRAME_REGISTRY_H_

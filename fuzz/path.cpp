// Paths: no drive path leaves its drive, and a plain file name stays in its directory.
#include "fuzzing.h"
#include "host/error.h"
#include "platform/paths.h"
#include "platform/posix/native_paths.h"

namespace {

using namespace tessel;
using fuzz::Require;

void CheckNative(const std::string& path) {
  static const posix::NativePaths kPaths("/drives");
  try {
    const std::string native = kPaths.Native(path);
    const std::string root = kPaths.DriveRoot(path);
    if (root.empty()) return;
    Require(native == root || native.starts_with(root + "/"), "a drive path leaves its drive");
    Require((native + "/").find("/../") == std::string::npos, "a drive path goes up");
  } catch (const RuntimeError& error) {
    Require(path.find('\0') != std::string::npos && error.Number() == 75, "a path was refused");
  }
}

void CheckJoin(const std::string& base, const std::string& name) {
  const std::string joined = paths::Join(base, name);
  Require(joined.starts_with(base) && joined.ends_with(name), "a join lost something");
  (void)paths::Parent(joined);
  if (!paths::IsPlainFileName(name) || base.empty()) return;
  Require(paths::FileName(joined) == name, "a joined name is not the file's name");
  if (!base.ends_with('/') && !base.ends_with('\\')) {
    Require(paths::Parent(joined) == base, "a joined name lies elsewhere");
  }
  CheckNative(joined);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::string base = input.Part();
  const std::string name = input.Rest();
  CheckNative(base);
  CheckNative(name);
  CheckJoin(base, name);
  CheckJoin("C:\\temp", name);
  CheckJoin("/tmp", name);
  return 0;
}

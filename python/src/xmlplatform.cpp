#include "xmlplatform.h"

#include <mutex>

namespace pytrans {

namespace {

std::mutex& lifecycleLock() {
  static std::mutex lock;
  return lock;
}

void deleteSpace(TransSpace* space) {
  std::lock_guard<std::mutex> guard(lifecycleLock());
  delete space;
}

}  // namespace

std::unique_ptr<TransSpace, void (*)(TransSpace*)> newSpace() {
  std::lock_guard<std::mutex> guard(lifecycleLock());
  return {new TransSpace, deleteSpace};
}

XmlPlatform xmlPlatform() {
  static std::mutex lock;
  static std::weak_ptr<TransSpace const> current;
  std::lock_guard<std::mutex> guard(lock);
  XmlPlatform platform = current.lock();
  if (!platform) {
    platform =
        XmlPlatform(newSpace().release(), [](TransSpace const* space) { deleteSpace(const_cast<TransSpace*>(space)); });
    current = platform;
  }
  return platform;
}

}  // namespace pytrans

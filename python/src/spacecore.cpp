#include "spacecore.h"

#include <utility>

namespace pytrans {

namespace {

// The library hands out its entries as const references; the entries themselves are not const,
// and the space moves a value in or out of an entry only while it holds the lock.
TransValue& writable(TransValue const& entry) { return const_cast<TransValue&>(entry); }

}  // namespace

SpaceCore::SpaceCore() : platform_(xmlPlatform()), space_(newSpace()) {}

SpaceCore::~SpaceCore() {
  std::lock_guard<std::mutex> guard(lock_);
  for (auto& entry : entries_) release(entry.first);
}

// Trimming sets warning as well when it leaves nothing, so an empty name is told from a duplicate
// by trimming a copy the same way.
AddOutcome SpaceCore::outcome(bool added, TransString const& name) const {
  if (added) return AddOutcome::added;
  TransString trimmed(name);
  TransStatus status;
  return trimmed.trim(status).empty() ? AddOutcome::emptyName : AddOutcome::duplicate;
}

TransValue const* SpaceCore::findEntry(TransString const& name) const {
  TransStatus status;
  TransValue const& entry = space_->find(name, status);
  return status.failure() ? nullptr : &entry;
}

void SpaceCore::release(TransValue const* entry) {
  auto found = entries_.find(entry);
  if (found == entries_.end()) return;
  if (std::shared_ptr<ValueCell> cell = found->second.cell.lock()) {
    std::lock_guard<std::mutex> guard(cell->lock());
    cell->moveOutOf(writable(*entry));
  }
}

AddOutcome SpaceCore::add(TransString const& name, TransValue const& value, ValueKind kind) {
  std::lock_guard<std::mutex> guard(lock_);
  TransStatus status;
  bool const added = space_->add(name, value, status);
  if (added) entries_[findEntry(name)] = Entry{kind, {}};
  return outcome(added, name);
}

AddOutcome SpaceCore::add(TransString const& name, std::shared_ptr<ValueCell> const& cell) {
  std::lock_guard<std::mutex> guard(lock_);
  std::lock_guard<std::mutex> cellGuard(cell->lock());
  TransStatus status;
  bool const moving = !cell->inSpace();
  bool const added = space_->add(name, moving ? TransValue() : cell->value(), status);
  if (!added) return outcome(added, name);
  TransValue const* entry = findEntry(name);
  if (moving) {
    cell->moveInto(writable(*entry));
    entries_[entry] = Entry{cell->kind(), cell};
  } else {
    entries_[entry] = Entry{cell->kind(), {}};
  }
  return AddOutcome::added;
}

std::shared_ptr<ValueCell> SpaceCore::find(TransString const& name) {
  std::lock_guard<std::mutex> guard(lock_);
  TransValue const* entry = findEntry(name);
  if (entry == nullptr) return nullptr;
  Entry& known = entries_.at(entry);
  std::shared_ptr<ValueCell> cell = known.cell.lock();
  if (!cell) {
    cell = std::make_shared<ValueCell>(entry, known.kind, platform_);
    known.cell = cell;
  }
  return cell;
}

bool SpaceCore::exists(TransString const& name) {
  std::lock_guard<std::mutex> guard(lock_);
  TransStatus status;
  return space_->exists(name, status);
}

bool SpaceCore::remove(TransString const& name) {
  std::lock_guard<std::mutex> guard(lock_);
  TransValue const* entry = findEntry(name);
  if (entry == nullptr) return false;
  release(entry);
  entries_.erase(entry);
  TransStatus status;
  return space_->remove(name, status);
}

bool SpaceCore::removeAll(TransString const& name) {
  std::lock_guard<std::mutex> guard(lock_);
  TransValue const* entry = findEntry(name);
  if (entry != nullptr) {
    release(entry);
    entries_.erase(entry);
  }
  TransStatus status;
  return space_->removeAll(name, status);
}

std::unique_ptr<TransStringList, void (*)(TransStringList*)> SpaceCore::names() {
  std::lock_guard<std::mutex> guard(lock_);
  TransStatus status;
  return {space_->list(status), [](TransStringList* list) { TransSpace::releaseStringList(list); }};
}

bool SpaceCore::addImage(TransString const& group, TransImage const& image) {
  std::lock_guard<std::mutex> guard(lock_);
  TransStatus status;
  return space_->addImage(group, image, status);
}

// The library answers a missing image of an existing group with its empty image and no flag, so
// existence is asked first.
std::optional<TransImage> SpaceCore::image(TransString const& group, TransString const& name) {
  std::lock_guard<std::mutex> guard(lock_);
  TransStatus status;
  if (!space_->existsImage(group, name, status)) return std::nullopt;
  return space_->findImage(group, name, status);
}

bool SpaceCore::existsImage(TransString const& group, TransString const& name) {
  std::lock_guard<std::mutex> guard(lock_);
  TransStatus status;
  return space_->existsImage(group, name, status);
}

bool SpaceCore::removeImage(TransString const& group, TransString const& name) {
  std::lock_guard<std::mutex> guard(lock_);
  TransStatus status;
  return space_->removeImage(group, name, status);
}

}  // namespace pytrans

#include "spacecore.h"

#include <utility>

namespace pytrans {

SpaceCore::SpaceCore() : platform_(xmlPlatform()), space_(newSpace()) {}

SpaceCore::~SpaceCore() {
  std::lock_guard<std::mutex> guard(lock_);
  for (auto& entry : entries_) leave(entry.second);
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

void SpaceCore::leave(Entry const& entry) {
  TransStatus status;
  std::shared_ptr<ValueCell> cell = entry.cell.lock();
  if (!cell) {
    space_->remove(entry.name, status);
    return;
  }
  std::lock_guard<std::mutex> guard(cell->lock());
  TransValue value;
  space_->take(entry.name, value, status);
  cell->keep(std::move(value));
}

AddOutcome SpaceCore::add(TransString const& name, TransValue const& value, ValueKind kind) {
  std::lock_guard<std::mutex> guard(lock_);
  TransStatus status;
  bool const added = space_->add(name, value, status);
  if (added) entries_.emplace(findEntry(name), Entry{kind, {}, name});
  return outcome(added, name);
}

AddOutcome SpaceCore::add(TransString const& name, std::shared_ptr<ValueCell> const& cell) {
  std::lock_guard<std::mutex> guard(lock_);
  std::lock_guard<std::mutex> cellGuard(cell->lock());
  TransStatus status;
  bool const moving = !cell->inSpace();
  bool const added =
      moving ? space_->add(name, std::move(cell->ownValue()), status) : space_->add(name, cell->value(), status);
  if (!added) return outcome(added, name);
  TransValue const* entry = findEntry(name);
  if (moving) cell->readEntry(entry);
  entries_.emplace(entry, Entry{cell->kind(), moving ? cell : std::weak_ptr<ValueCell>(), name});
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
  auto const found = entries_.find(findEntry(name));
  if (found == entries_.end()) return false;
  leave(found->second);
  entries_.erase(found);
  return true;
}

bool SpaceCore::removeAll(TransString const& name) {
  std::lock_guard<std::mutex> guard(lock_);
  auto const found = entries_.find(findEntry(name));
  bool const removed = found != entries_.end();
  if (removed) {
    leave(found->second);
    entries_.erase(found);
  }
  TransStatus status;
  space_->removeAll(name, status);  // the image group of that name
  return removed;
}

TransStringListOwner SpaceCore::names() {
  std::lock_guard<std::mutex> guard(lock_);
  TransStatus status;
  return TransStringListOwner(space_->list(status));
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

#include "core/transconfig.h"

#include <transspace/transspace.h>

#include <cstddef>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <xalanc/Include/XalanMemoryManagement.hpp>
#include <xalanc/XPath/XPathEvaluator.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeInit.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

// ---- TransSpace::Data: the platform guards, then the stores ----

class TransSpace::Data {
public:
  // Xerces-C counts nested Initialize/Terminate calls itself.
  class XMLPlatformInit {
  public:
    XMLPlatformInit();
    virtual ~XMLPlatformInit();
  };

  // Xalan-C's XPathEvaluator::initialize keeps one static pointer and does not count: a second
  // initialize overwrites it and the second terminate dereferences null. So the library counts
  // the guards alive in the process and calls initialize on 0 -> 1 and terminate on 1 -> 0 (seen
  // with Xalan 1.12, in LIFO and overlapping order alike). That count is the XML library's
  // missing state, not the space's.
  class XPathEvaluatorInit {
  public:
    XPathEvaluatorInit();
    virtual ~XPathEvaluatorInit();

  private:
    static std::size_t users_;
  };

  using ValueMap = std::map<TransString, TransValue>;
  using ImageMap = std::map<TransString, std::vector<TransImage>>;

  Data();

  // Declaration order is construction order; destruction runs in reverse, so the values (and
  // their XML documents) are gone before the platform goes down. If a member's constructor throws,
  // the members already built are destroyed in reverse and `new Data` frees the record.
  XMLPlatformInit xmlPlatformInit_;
  XPathEvaluatorInit xpathEvaluatorInit_;
  XALAN_CPP_NAMESPACE::XalanSourceTreeInit sourceTreeInit_;
  ValueMap values_;
  TransValue null_;
  ImageMap images_;
  // Value-initialised (number 0) rather than left indeterminate: findImage hands it out, and a
  // caller reading `number` of an indeterminate int would read garbage.
  TransImage emptyImage_{};
};

TransSpace::Data::XMLPlatformInit::XMLPlatformInit() {
  XERCES_CPP_NAMESPACE::XMLPlatformUtils::Initialize(XERCES_CPP_NAMESPACE::XMLUni::fgXercescDefaultLocale, nullptr,
                                                     nullptr, nullptr);
}

TransSpace::Data::XMLPlatformInit::~XMLPlatformInit() { XERCES_CPP_NAMESPACE::XMLPlatformUtils::Terminate(); }

std::size_t TransSpace::Data::XPathEvaluatorInit::users_ = 0;

TransSpace::Data::XPathEvaluatorInit::XPathEvaluatorInit() {
  // Counted only after initialize returns, so a throwing initialize leaves the count as it was.
  if (users_ == 0) {
    XALAN_CPP_NAMESPACE::XPathEvaluator::initialize(XALAN_CPP_NAMESPACE::XalanMemMgrs::getDefaultXercesMemMgr());
  }
  ++users_;
}

TransSpace::Data::XPathEvaluatorInit::~XPathEvaluatorInit() {
  if (--users_ == 0) XALAN_CPP_NAMESPACE::XPathEvaluator::terminate();
}

TransSpace::Data::Data() : sourceTreeInit_(XALAN_CPP_NAMESPACE::XalanMemMgrs::getDefaultXercesMemMgr()) {}

// ---- helpers ----

namespace {

// The trimmed copy of a name; the caller's string is never changed. Trimming reports into a
// status of its own: the flags of each operation are exactly the operation's own.
TransString trimmed(TransString const& name) {
  TransString copy(name);
  TransStatus local;
  copy.trim(local);
  return copy;
}

// The first step of every operation on one name (a value's handle, an image group): the status
// reset and the trimmed name. A name that trims to empty sets failure; the caller then gives up.
TransString checkedName(TransString const& name, TransStatus& status) {
  status.reset();
  TransString checked(trimmed(name));
  if (checked.empty()) status.failure(true);
  return checked;
}

void setBoth(TransStatus& status, bool value) {
  status.failure(value);
  status.warning(value);
}

// The MBCS bytes of an image name as the store compares them: trimmed, in the host's code page.
// Conversion reports into a status of its own, which keeps existsImage's warnings
// from being reset by asMBCS during the scan.
std::string imageNameBytes(TransString const& name) {
  TransString copy(trimmed(name));
  TransStatus local;
  return copy.asMBCS(local);
}

// Image names are compared byte for byte (strcmp), so they are case-sensitive (deliberate).
bool sameImageName(TransImage const& image, std::string const& sought) {
  return std::strcmp(imageNameBytes(image.name).c_str(), sought.c_str()) == 0;
}

}  // namespace

// ---- construction ----

TransSpace::TransSpace() : data_(new Data()) {}

TransSpace::~TransSpace() {
  if (data_ != nullptr) delete data_;
}

// ---- values ----

bool TransSpace::add(TransString const& handle, TransValue const& value, TransStatus& status) {
  TransString name(checkedName(handle, status));
  if (name.empty()) return false;
  // Insert-if-absent: a name in use keeps its old value; there is no replacement.
  bool const inserted = data_->values_.emplace(std::move(name), value).second;
  setBoth(status, !inserted);
  return inserted;
}

bool TransSpace::add(TransString const& handle, TransValue&& value, TransStatus& status) {
  TransString name(checkedName(handle, status));
  if (name.empty()) return false;
  // try_emplace leaves the value alone when the name is in use.
  bool const inserted = data_->values_.try_emplace(std::move(name), std::move(value)).second;
  setBoth(status, !inserted);
  return inserted;
}

TransValue const& TransSpace::find(TransString const& handle, TransStatus& status) const {
  TransString const name(checkedName(handle, status));
  if (name.empty()) return data_->null_;
  Data::ValueMap::const_iterator const entry = data_->values_.find(name);
  if (entry == data_->values_.end()) {
    setBoth(status, true);
    return data_->null_;
  }
  return entry->second;
}

bool TransSpace::exists(TransString const& handle, TransStatus& status) const {
  TransString const name(checkedName(handle, status));
  if (name.empty()) return false;
  if (data_->values_.count(name) != 0) return true;
  status.warning(true);  // absent is an answer, not a failure
  return false;
}

bool TransSpace::remove(TransString const& handle, TransStatus& status) {
  TransString const name(checkedName(handle, status));
  if (name.empty()) return false;
  bool const erased = data_->values_.erase(name) != 0;  // the image map is never touched here
  setBoth(status, !erased);
  return erased;
}

bool TransSpace::take(TransString const& handle, TransValue& value, TransStatus& status) {
  TransString const name(checkedName(handle, status));
  if (name.empty()) return false;
  Data::ValueMap::iterator const entry = data_->values_.find(name);
  bool const found = entry != data_->values_.end();
  setBoth(status, !found);
  if (!found) return false;
  value.swap(entry->second);
  data_->values_.erase(entry);
  return true;
}

bool TransSpace::removeAll(TransString const& handle, TransStatus& status) {
  TransString const name(checkedName(handle, status));
  if (name.empty()) return false;
  bool const erased = data_->values_.erase(name) != 0;
  data_->images_.erase(name);
  // Deliberately only the value decides: an erased image group alone still reports failure.
  setBoth(status, !erased);
  return erased;
}

TransStringList* TransSpace::list(TransStatus& status) const {
  status.reset();
  // Owned here until returned, so that an exception from a conversion or append frees it.
  std::unique_ptr<TransStringList> names(new TransStringList());
  if (data_->values_.empty()) status.warning(true);
  for (Data::ValueMap::value_type const& entry : data_->values_) {
    // Conversion and append report into statuses of their own, never into the caller's.
    TransStatus convertStatus;
    TransStatus appendStatus;
    names->push_back(entry.first.asUTF16(convertStatus), appendStatus);
  }
  return names.release();
}

// ---- releases: the same as TransValue's ----

void TransSpace::releaseString(TransString*& string, TransStatus& status) { TransValue::releaseString(string, status); }

void TransSpace::releaseStringList(TransStringList*& strings, TransStatus& status) {
  TransValue::releaseStringList(strings, status);
}

// ---- images ----

bool TransSpace::addImage(TransString const& group, TransImage const& image, TransStatus& status) {
  TransString name(checkedName(group, status));
  if (name.empty()) return false;
  // No duplicate check and no look at image.name: the image is appended as it is.
  Data::ImageMap::iterator const entry = data_->images_.find(name);
  if (entry != data_->images_.end()) {
    entry->second.push_back(image);
  } else {
    data_->images_.emplace(std::move(name), std::vector<TransImage>(1, image));
  }
  setBoth(status, false);
  return true;
}

TransImage const& TransSpace::findImage(TransString const& group, TransString const& name, TransStatus& status) const {
  status.reset();
  TransString const groupName(trimmed(group));
  TransString const imageName(trimmed(name));
  if (groupName.empty() || imageName.empty()) {
    setBoth(status, true);
    return data_->emptyImage_;
  }
  Data::ImageMap::const_iterator const entry = data_->images_.find(groupName);
  if (entry == data_->images_.end()) {
    setBoth(status, true);
    return data_->emptyImage_;
  }
  // A missing image in an existing group sets no flag (deliberate asymmetry with a missing group).
  std::string const sought(imageNameBytes(imageName));
  for (TransImage const& image : entry->second) {
    if (sameImageName(image, sought)) return image;
  }
  return data_->emptyImage_;
}

bool TransSpace::existsImage(TransString const& group, TransString const& name, TransStatus& status) const {
  status.reset();
  TransString const groupName(trimmed(group));
  TransString const imageName(trimmed(name));
  if (groupName.empty() || imageName.empty()) {
    status.failure(true);
    return false;
  }
  Data::ImageMap::const_iterator const entry = data_->images_.find(groupName);
  if (entry == data_->images_.end()) {
    status.warning(true);
    return false;
  }
  // Every image passed over warns, so a match after the first place returns true with warning
  // set: required as it is; callers go by the result.
  std::string const sought(imageNameBytes(imageName));
  for (TransImage const& image : entry->second) {
    if (sameImageName(image, sought)) return true;
    status.warning(true);
  }
  return false;
}

bool TransSpace::removeImage(TransString const& group, TransString const& name, TransStatus& status) {
  status.reset();
  TransString const groupName(trimmed(group));
  TransString const imageName(trimmed(name));
  if (groupName.empty() || imageName.empty()) {
    status.failure(true);
    return false;
  }
  Data::ImageMap::iterator const entry = data_->images_.find(groupName);
  if (entry == data_->images_.end()) return false;
  std::vector<TransImage>& images = entry->second;
  std::string const sought(imageNameBytes(imageName));
  for (std::vector<TransImage>::iterator image = images.begin(); image != images.end(); ++image) {
    if (sameImageName(*image, sought)) {
      images.erase(image);  // only the first match; the group stays even when emptied
      return true;
    }
  }
  return false;
}

// ---- the forms without status: assert no failure, with their fixed texts (deliberately
// "TransString::"). They come last so that their assertion lines are easy to find, and clang-format
// leaves them alone: the texts are fixed, spaces included. ----
// clang-format off

bool TransSpace::add(TransString const& handle, TransValue const& value) {
  TransStatus status;
  bool const result = add(handle, value, status);
  assert(! status.failure() && "Failure: TransString::add(handle,value)");
  return result;
}

bool TransSpace::add(TransString const& handle, TransValue&& value) {
  TransStatus status;
  bool const result = add(handle, std::move(value), status);
  assert(! status.failure() && "Failure: TransString::add(handle,value)");
  return result;
}

TransValue const& TransSpace::find(TransString const& handle) const {
  TransStatus status;
  TransValue const& result = find(handle, status);
  assert(! status.failure() && "Failure: TransString::find(handle)");
  return result;
}

bool TransSpace::exists(TransString const& handle) const {
  TransStatus status;
  bool const result = exists(handle, status);
  assert(! status.failure() && "Failure: TransString::exists(handle)");
  return result;
}

bool TransSpace::remove(TransString const& handle) {
  TransStatus status;
  bool const result = remove(handle, status);
  assert(! status.failure() && "Failure: TransString::remove(handle)");
  return result;
}

bool TransSpace::take(TransString const& handle, TransValue& value) {
  TransStatus status;
  bool const result = take(handle, value, status);
  assert(! status.failure() && "Failure: TransString::take(handle,value)");
  return result;
}

TransStringList* TransSpace::list() const {
  TransStatus status;
  TransStringList* result = list(status);
  assert(! status.failure() && "Failure: TransString::list()");
  return result;
}

void TransSpace::releaseString(TransString*& string) {
  TransStatus status;
  releaseString(string, status);
  assert(! status.failure() && "Failure: TransString::releaseString(string)");
}

void TransSpace::releaseStringList(TransStringList*& strings) {
  TransStatus status;
  releaseStringList(strings, status);
  assert(! status.failure() && "Failure: TransString::releaseStringList(strings)");
}
// clang-format on

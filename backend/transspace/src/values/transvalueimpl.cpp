#include "core/transconfig.h"

#include "values/transvalueimpl.h"

TransValueImpl::~TransValueImpl() {}

void TransValueImpl::notApplicable(TransStatus& status) {
  status.reset();
  status.failure(true);
  status.warning(true);
}

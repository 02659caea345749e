// The order of the platform calls of construction and destruction,
// the library's own count of Xalan's XPath initialisation, and the undoing of a construction that
// throws.
//
// This program interposes on the six platform calls that the library makes across library
// boundaries (through its PLT), the initialise and terminate of Xerces-C, of Xalan-C's XPath and of
// its source tree: it defines them itself (the target exports them, ENABLE_EXPORTS),
// records each call and forwards it to Xerces-C or Xalan-C, or throws when a test arms a fault.
// It is a program of its own so that no other test sees the interposers.
#include "spacetestsupport.h"
#include <transspace/transspace.h>

#include <dlfcn.h>

#include <memory>

#include <stdexcept>
#include <string>
#include <vector>

#include <xalanc/XPath/XPathEvaluator.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <gtest/gtest.h>

namespace {

std::vector<std::string> calls;
std::string failingCall;  // the recorded name of the call that throws next; empty: none

// Records the call, throws if it is the armed one, and otherwise returns the real function.
template <typename Function>
Function record(char const* name, char const* symbol) {
  calls.emplace_back(name);
  if (failingCall == name) {
    failingCall.clear();
    throw std::runtime_error(std::string("injected failure of ") + name);
  }
  Function real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, symbol));
  if (real == nullptr) throw std::logic_error(std::string("cannot find the real ") + symbol);
  return real;
}

}  // namespace

XERCES_CPP_NAMESPACE_BEGIN
void XMLPlatformUtils::Initialize(char const* const locale, char const* const nlsHome, PanicHandler* const panicHandler,
                                  MemoryManager* const memoryManager) {
  using Function = void (*)(char const*, char const*, PanicHandler*, MemoryManager*);
  record<Function>("Xerces Initialize",
                   "_ZN11xercesc_3_216XMLPlatformUtils10InitializeEPKcS2_PNS_12PanicHandlerEPNS_13MemoryManagerE")(
      locale, nlsHome, panicHandler, memoryManager);
}

void XMLPlatformUtils::Terminate() {
  record<void (*)()>("Xerces Terminate", "_ZN11xercesc_3_216XMLPlatformUtils9TerminateEv")();
}
XERCES_CPP_NAMESPACE_END

namespace XALAN_CPP_NAMESPACE {
void XPathEvaluator::initialize(MemoryManager& manager) {
  record<void (*)(MemoryManager&)>(
      "XPath initialize", "_ZN11xalanc_1_1214XPathEvaluator10initializeERN11xercesc_3_213MemoryManagerE")(manager);
}

void XPathEvaluator::terminate() {
  record<void (*)()>("XPath terminate", "_ZN11xalanc_1_1214XPathEvaluator9terminateEv")();
}
}  // namespace XALAN_CPP_NAMESPACE

// Xalan's source-tree support is a member object of the space, so the library calls its complete-
// object constructor and destructor. They are interposed by their mangled names (a definition of
// the constructor itself would construct the members a second time).
void interposedSourceTreeInit(void* self, XERCES_CPP_NAMESPACE::MemoryManager& manager) __asm__(
    "_ZN11xalanc_1_1219XalanSourceTreeInitC1ERN11xercesc_3_213MemoryManagerE");
void interposedSourceTreeTerm(void* self) __asm__("_ZN11xalanc_1_1219XalanSourceTreeInitD1Ev");

void interposedSourceTreeInit(void* self, XERCES_CPP_NAMESPACE::MemoryManager& manager) {
  record<void (*)(void*, XERCES_CPP_NAMESPACE::MemoryManager&)>(
      "SourceTree init", "_ZN11xalanc_1_1219XalanSourceTreeInitC1ERN11xercesc_3_213MemoryManagerE")(self, manager);
}

void interposedSourceTreeTerm(void* self) {
  record<void (*)(void*)>("SourceTree term", "_ZN11xalanc_1_1219XalanSourceTreeInitD1Ev")(self);
}

namespace {

using Calls = std::vector<std::string>;

class SpaceInitTest : public ::testing::Test {
protected:
  void SetUp() override {
    calls.clear();
    failingCall.clear();
  }
};

TEST_F(SpaceInitTest, ConstructionInitialisesInOrderAndDestructionTerminatesInReverse) {
  {
    TransSpace space;
    EXPECT_EQ(calls, (Calls{"Xerces Initialize", "XPath initialize", "SourceTree init"}));
    calls.clear();
  }
  EXPECT_EQ(calls, (Calls{"SourceTree term", "XPath terminate", "Xerces Terminate"}));
}

// Xerces counts nested calls itself, so each space calls it; Xalan's XPath does not, so only the
// first space alive initialises it and only the last one terminates it, in either order.
TEST_F(SpaceInitTest, OverlappingSpacesInitialiseXPathOnce) {
  auto first = std::make_unique<TransSpace>();
  auto second = std::make_unique<TransSpace>();
  EXPECT_EQ(calls, (Calls{"Xerces Initialize", "XPath initialize", "SourceTree init", "Xerces Initialize",
                          "SourceTree init"}));
  calls.clear();
  first.reset();
  EXPECT_EQ(calls, (Calls{"SourceTree term", "Xerces Terminate"}));
  calls.clear();
  second.reset();
  EXPECT_EQ(calls, (Calls{"SourceTree term", "XPath terminate", "Xerces Terminate"}));

  calls.clear();
  first = std::make_unique<TransSpace>();
  second = std::make_unique<TransSpace>();
  second.reset();
  EXPECT_EQ(calls, (Calls{"Xerces Initialize", "XPath initialize", "SourceTree init", "Xerces Initialize",
                          "SourceTree init", "SourceTree term", "Xerces Terminate"}));
  calls.clear();
  first.reset();
  EXPECT_EQ(calls, (Calls{"SourceTree term", "XPath terminate", "Xerces Terminate"}));
}

// A throwing step undoes the steps already done, in reverse, and the exception passes on.
TEST_F(SpaceInitTest, ThrowingXPathInitialisationTerminatesXercesAgain) {
  failingCall = "XPath initialize";
  EXPECT_THROW(TransSpace(), std::runtime_error);
  EXPECT_EQ(calls, (Calls{"Xerces Initialize", "XPath initialize", "Xerces Terminate"}));

  // The count was not disturbed: the next space initialises XPath again and works.
  calls.clear();
  {
    TransSpace space;
    EXPECT_TRUE(space.add(TransString("x"), TransValue(1.0)));
  }
  EXPECT_EQ(calls, (Calls{"Xerces Initialize", "XPath initialize", "SourceTree init", "SourceTree term",
                          "XPath terminate", "Xerces Terminate"}));
}

// The last platform step throws: XPath and Xerces are terminated again, in reverse order.
TEST_F(SpaceInitTest, ThrowingSourceTreeInitialisationTerminatesXPathAndXerces) {
  failingCall = "SourceTree init";
  EXPECT_THROW(TransSpace(), std::runtime_error);
  EXPECT_EQ(calls,
            (Calls{"Xerces Initialize", "XPath initialize", "SourceTree init", "XPath terminate", "Xerces Terminate"}));

  calls.clear();
  {
    TransSpace space;
    EXPECT_TRUE(space.add(TransString("x"), TransValue(1.0)));
  }
  EXPECT_EQ(calls, (Calls{"Xerces Initialize", "XPath initialize", "SourceTree init", "SourceTree term",
                          "XPath terminate", "Xerces Terminate"}));
}

TEST_F(SpaceInitTest, ThrowingXercesInitialisationCallsNothingElse) {
  failingCall = "Xerces Initialize";
  EXPECT_THROW(TransSpace(), std::runtime_error);
  EXPECT_EQ(calls, (Calls{"Xerces Initialize"}));
}

// A failed construction while another space is alive leaves that space's platform up.
TEST_F(SpaceInitTest, ThrowingConstructionBesideALiveSpace) {
  TransSpace alive;
  calls.clear();
  failingCall = "Xerces Initialize";
  EXPECT_THROW(TransSpace(), std::runtime_error);
  EXPECT_EQ(calls, (Calls{"Xerces Initialize"}));
  EXPECT_TRUE(alive.add(TransString("still"), TransValue(1.0)));
  calls.clear();
  {
    TransSpace second;  // XPath is already up: not initialised again
  }
  EXPECT_EQ(calls, (Calls{"Xerces Initialize", "SourceTree init", "SourceTree term", "Xerces Terminate"}));
}

}  // namespace

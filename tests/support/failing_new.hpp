#ifndef VELA_TESTS_SUPPORT_FAILING_NEW_HPP
#define VELA_TESTS_SUPPORT_FAILING_NEW_HPP

namespace vela::test {

/// While one of these lives, this thread's allocation number `failing` (from 0) and every later one
/// fails. Linked into tests that replace operator new.
class FailingNew {
public:
    explicit FailingNew(int failing);
    ~FailingNew();
    FailingNew(const FailingNew&) = delete;
    FailingNew& operator=(const FailingNew&) = delete;
};

/// Allocations of this thread that have not been released.
long live_allocations();

/// Allocations of this thread so far.
long allocations_made();

}  // namespace vela::test

#endif

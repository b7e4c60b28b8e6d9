#include "conventions/error_channel.hpp"
#include "conventions/fp_environment.hpp"
#include "support/equality.hpp"
#include "support/floating_point_state.hpp"
#include "support/special_values.hpp"
#include "support/threads.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <unistd.h>
#include <csignal>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>

namespace vela::test {
namespace {

using namespace conventions;

/// Type and text of what a call throws.
template <class Function>
std::string thrown_by(Function function) {
    try {
        function();
    } catch (const std::invalid_argument& exception) {
        return std::string("invalid_argument: ") + exception.what();
    } catch (const std::overflow_error& exception) {
        return std::string("overflow_error: ") + exception.what();
    } catch (const std::runtime_error& exception) {
        return std::string("runtime_error: ") + exception.what();
    }
    return "nothing";
}

const std::string kDivide = "runtime_error: Float exception: divide by zero.";
const std::string kInvalid = "invalid_argument: Float exception: invalid_argument.";
const std::string kOverflow = "overflow_error: Float exception: overflow.";
const std::string kMultiple =
    "runtime_error: Runtime exception: multiple floating point faults/traps.";
const std::string kInteger = "runtime_error: Runtime exception: integer division by zero.";

TEST(FaultTranslator, ThrowsTheExceptionOfEachFaultAndRearmsForFloatingPointOnly) {
    struct Case {
        unsigned code;
        std::string thrown;
        bool rearms;
    };
    const Case cases[] = {{0xC000008E, kDivide, true},    {0xC0000090, kInvalid, true},
                          {0xC0000091, kOverflow, true},  {0xC00002B4, kMultiple, true},
                          {0xC00002B5, kMultiple, true},  {0xC0000094, kInteger, false},
                          {0xC000008F, "nothing", false}, {0, "nothing", false}};
    for (const Case& c : cases) {
        ResetFpuStates();
        EXPECT_EQ(thrown_by([&] { fp_fault_translator(c.code); }), c.thrown);
        const bool armed = traps_are_armed();
        ResetFpuStates();
        EXPECT_EQ(armed, c.rearms && has_catchable_traps()) << c.thrown;
    }
}

TEST(Traps, ArriveAsExceptionsOnARegisteredThread) {
    if (!has_catchable_traps()) {
        GTEST_SKIP() << "no catchable traps on this platform";
    }
    on_thread(Registration::kRegistered, [] {
        volatile double zero = 0.0;
        volatile double huge = 1e308;
        volatile double tiny = 1e-320;
        volatile int noInteger = 0;
        volatile double result = 0.0;
        SetKroFpuStates();
        EXPECT_EQ(thrown_by([&] { result = 1.0 / zero; }), kDivide);
        EXPECT_EQ(thrown_by([&] { result = zero / zero; }), kInvalid);
        EXPECT_EQ(thrown_by([&] { result = huge * huge; }), kOverflow);
        EXPECT_EQ(thrown_by([&] { result = 1 / noInteger; }), kInteger);
        EXPECT_EQ(thrown_by([&] { result = tiny * 1e-10; }), "nothing");  // underflow stays quiet
        // Each fault left the traps armed, the integer one included.
        EXPECT_EQ(thrown_by([&] { result = 1.0 / zero; }), kDivide);
        ResetFpuStates();
        result = 1.0 / zero;
        EXPECT_TRUE(IsPlusInfinity(result));
        SetKroFpuStates();
        EXPECT_EQ(RegisterKroSigfpeHandler(), 0);
        EXPECT_FALSE(traps_are_armed()) << "registering turns the traps off";
    });
}

void exit_with_seven(int) { _exit(7); }

TEST(TrapsDeathTest, GoToThePreviousHandlerUnlessTheyAreOurs) {
    if (!has_catchable_traps()) {
        GTEST_SKIP() << "no catchable traps on this platform";
    }
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    volatile double zero = 0.0;
    volatile double result = 0.0;
    const auto fault_on_unregistered_thread = [&] {
        std::thread([] { RegisterKroSigfpeHandler(); }).join();
        SetKroFpuStates();
        result = 1.0 / zero;
    };
    EXPECT_EXIT(fault_on_unregistered_thread(), testing::KilledBySignal(SIGFPE), "");
    EXPECT_EXIT(
        {
            std::signal(SIGFPE, exit_with_seven);
            fault_on_unregistered_thread();
        },
        testing::ExitedWithCode(7), "");
    EXPECT_EXIT(
        {
            std::signal(SIGFPE, exit_with_seven);
            RegisterKroSigfpeHandler();
            std::raise(SIGFPE);  // sent by a process, not by the hardware
        },
        testing::ExitedWithCode(7), "");
}

TEST(Bracket, TurnsFaultsIntoExceptionsOnRegisteredThreadsAndIntoNaNElsewhere) {
    struct Case {
        double (*call)();
        std::string registered;
        std::string unregistered;
        double value;
    };
    const std::string none = "nothing";
    const std::string domain = "invalid_argument: log of a negative argument";
    const std::string range = "runtime_error: float overflow";
    const Case cases[] = {
        {[] { return NormalCdf(kNaN, 0.0, 1.0, false); }, kInvalid, none, kNaN},
        {[] { return NormalCdf(2.0, 1.0, 0.0, false); }, kDivide, none, kNaN},
        {[] { return NormalPdf(1.0, 1.0, 0.0); }, kInvalid, none, kNaN},
        {[] { return NormalPdf(2.0, 1.0, 0.0); }, none, none, 0.0},      // caught inside
        {[] { return NormalPdf(1e308, 0.0, 1e-10); }, none, none, 0.0},  // overflows inside
        {[] { return ExponentialInvCdf(1.0, 1.0, 0.0); }, none, none, kNaN},
        {[] { return TCritValue(0.05, 3.0, EAlternative::TwoSided, 0); }, kDivide, none, kNaN},
        // Guarded functions throw by themselves.
        {[] { return ExponentialInvCdf(1.5, 1.0, 0.0); }, domain, domain, kNaN},
        {[] { return ExponentialCdf(1000.0, -1.0, 0.0, true); }, range, range, kNaN},
        {[] { return ExponentialInvCdf(MissingValue, 1.0, 0.0); }, domain, domain, kNaN},
        {[] { return WeibullInvCdf(MissingValue, 2.0, 1.0, 0.0); }, domain, domain, kNaN},
        {[] { return LogisticInvCdf(1.5, 0.0, 1.0); }, domain, domain, kNaN},
        // Odd parameters are no faults.
        {[] { return LogLogisticCdf(1.5, 0.0, 1.0, kNaN, false); }, none, none, kNaN},
        {[] { return LogNormalInvCdf(0.5, kNaN, 1.0, 0.0); }, none, none, kNaN},
        {[] { return ExponentialPdf(1.0, 1.0, kNaN); }, none, none, kNaN},
        {[] { return TriangularCdf(1.0, -kInfinity, 1.0, 2.0, false); }, none, none, kNaN},
        {[] { return CauchyInvCdf(0.5, 0.0, kInfinity); }, none, none, kNaN},
        {[] { return WeibullCdf(1.0, 2.0, 0.0, 0.0, false); }, none, none, kNaN},
        {[] { return WeibullCdf(1.0, 3.0, -1.0, 0.0, true); }, none, none, 1.0},  // t = -1
        {[] { return HalfNormalCdf(MissingValue, -1.0, 0.0, false); }, none, none, 2.46912e30},
        {[] { return HalfNormalCdf(0.0, -1.0, 0.0, true); }, none, none, 1.0},  // at the threshold
        {[] { return HalfNormalCdf(1.0, -1.0, 0.0, true); }, none, none, kNaN},
    };
    for (const Case& c : cases) {
        for (const auto registration : {Registration::kRegistered, Registration::kUnregistered}) {
            on_thread(registration, [&] {
                double result = kNaN;
                const std::string thrown = thrown_by([&] { result = c.call(); });
                ResetFpuStates();
                EXPECT_EQ(thrown, registration == Registration::kRegistered ? c.registered
                                                                            : c.unregistered);
                EXPECT_TRUE(same_bits(result, c.value)) << result;
            });
        }
    }
}

TEST(Bracket, ResetsTheStateOfTheHostAlsoForAnEmptyArray) {
    SetKroFpuStates();
    NormalCdf(nullptr, nullptr, 0, 0.0, 1.0, false);
    const bool armed = traps_are_armed();
    ResetFpuStates();
    EXPECT_FALSE(armed);
}

TEST(QuietArithmetic, GivesTheCallerItsStateBack) {
    SetKroFpuStates();
    {
        const QuietArithmetic quiet;
        volatile double huge = 1e308;
        EXPECT_FALSE(traps_are_armed());
        EXPECT_EQ(value_unless_overflow(7.0, [=] { return huge * huge; }), 7.0);
    }
    const bool armed = traps_are_armed();
    ResetFpuStates();
    EXPECT_EQ(armed, has_catchable_traps());
}

TEST(ErrorChannel, RaisesUpwardOnlyAndKeepsTheNameOfTheFirstToDoSo) {
    enter_kernel("outer");
    raise_level(kNoConvergence, "inner");
    raise_level(kInvalidArgument, "outer");
    EXPECT_EQ(error_channel.kernel_error_level, kNoConvergence);
    EXPECT_STREQ(error_channel.kernel_routine_name, "inner");
    EXPECT_TRUE(kernel_failed());
    enter_kernel("outer");
    raise_level(kWarning, "outer");
    EXPECT_FALSE(kernel_failed());
    error_channel.kernel_error_level = -1;
    EXPECT_TRUE(kernel_failed()) << "the level is read as an unsigned number";
    clear_negative_level("outer");
    EXPECT_FALSE(kernel_failed());
}

TEST(ErrorChannel, BelongsToItsThread) {
    enter_kernel("mine");
    std::thread([] {
        enter_kernel("theirs");
        raise_level(kNoConvergence, "theirs");
    }).join();
    EXPECT_STREQ(error_channel.kernel_routine_name, "mine");
    EXPECT_FALSE(kernel_failed());
}

TEST(Predicates, TellMissingResultsAndInfinitiesApart) {
    EXPECT_TRUE(IsNaN(kNaN) && IsResultNA(kNaN) && !IsInfinity(kNaN));
    EXPECT_FALSE(IsResultNA(MissingValue) || IsInfinity(MissingValue));
    EXPECT_TRUE(IsPlusInfinity(kInfinity) && !IsMinusInfinity(kInfinity) && IsInfinity(kInfinity));
    EXPECT_TRUE(IsMinusInfinity(-kInfinity) && !IsPlusInfinity(-kInfinity));
    EXPECT_TRUE(IsInfinity(-kInfinity));
}

}  // namespace
}  // namespace vela::test

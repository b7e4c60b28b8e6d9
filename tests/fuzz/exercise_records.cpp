#include "fuzz/exercise.hpp"
#include "vela/vela.hpp"

#include <algorithm>

namespace vela::test {
namespace {

/// What every test of hypothesis is asked for; the codes may be outside their sets.
struct Request {
    double confidence;
    IntervalType type;
    AlternativeHypothesis alternative;
    double hypothesized;

    explicit Request(Bytes& bytes)
        : confidence(bytes.fraction()),
          type(static_cast<IntervalType>(static_cast<int>(bytes.below(5)) - 2)),
          alternative(static_cast<AlternativeHypothesis>(static_cast<int>(bytes.below(4)) - 1)),
          hypothesized(bytes.number()) {}
};

/// The status and the record's doubles.
void add_record(Results& results, int status, const double* first, std::size_t doubles) {
    constexpr int statuses[] = {0, 10001, 10002, 30002, 30023};
    require(std::find(std::begin(statuses), std::end(statuses), status) != std::end(statuses));
    results.add(status);
    results.add(first, doubles);
}

void exercise_means(const Sample& x, const Sample& y, const Request& r, Bytes& bytes,
                    Results& results) {
    v0::OneSampleZ z;
    z.count = x.count;
    const int zStatus = RunOneSampleZ(&z, x.data(), bytes.number(), r.confidence, r.type,
                                      r.alternative, r.hypothesized);
    add_record(results, zStatus, &z.mean, 7);

    v0::OneSampleT t;
    t.count = x.count;
    const int tStatus =
        RunOneSampleT(&t, x.data(), r.confidence, r.type, r.alternative, r.hypothesized);
    add_record(results, tStatus, &t.mean, 7);

    v0::PairedT paired;
    paired.count = std::min(x.count, y.count);
    const int pairedStatus = RunPairedT(&paired, x.data(), y.data(), r.confidence, r.type,
                                        r.alternative, r.hypothesized);
    add_record(results, pairedStatus, &paired.mean1, 13);

    v0::TwoSampleT two;
    two.count1 = x.count;
    two.count2 = y.count;
    const int twoStatus = RunTwoSampleT(&two, x.data(), y.data(), bytes.below(2) != 0, r.confidence,
                                        r.type, r.alternative, r.hypothesized);
    add_record(results, twoStatus, &two.mean1, 13);
}

void exercise_ranks(const Sample& x, const Sample& y, const Request& r, Results& results) {
    using RunSign = int (*)(v0::OneSampleSign*, const double*, double, IntervalType,
                            AlternativeHypothesis, double);
    for (const RunSign run : {RunSign{v0::RunOneSampleSign}, RunSign{v0::RunKroOneSampleSign}}) {
        v0::OneSampleSign sign;
        sign.count = x.count;
        const int status =
            run(&sign, x.data(), r.confidence, r.type, r.alternative, r.hypothesized);
        add_record(results, status, &sign.median, 15);
    }
    v0::OneSampleWilcoxon wilcoxon;
    wilcoxon.count = x.count;
    const int status = RunKroOneSampleWilcoxon(&wilcoxon, x.data(), r.confidence, r.type,
                                               r.alternative, r.hypothesized);
    add_record(results, status, &wilcoxon.estimate, 6);
    results.add(wilcoxon.count);

    v0::MannWhitney ranks;
    ranks.count1 = x.count;
    ranks.count2 = y.count;
    const int ranksStatus =
        RunKroMannWhitney(&ranks, x.data(), y.data(), r.confidence, r.type, r.alternative);
    add_record(results, ranksStatus, &ranks.median1, 9);

    using RunRuns = int (*)(v1::RunsTest*, const double*, double, std::uint32_t);
    for (const RunRuns run : {RunRuns{v1::RunRunsTest}, RunRuns{v1::RunKroRunsTest}}) {
        v1::RunsTest runs;
        const int runsStatus = run(&runs, x.data(), r.hypothesized, x.count);
        add_record(results, runsStatus, &runs.expected, 2);
        results.add(runs.runs);
    }
}

}  // namespace

void exercise_records(Bytes& bytes, Results& results) {
    const Request request(bytes);
    const Sample x = make_sample(bytes, 120);
    const Sample y = make_sample(bytes, 120);
    exercise_means(x, y, request, bytes, results);
    exercise_ranks(x, y, request, results);
}

}  // namespace vela::test

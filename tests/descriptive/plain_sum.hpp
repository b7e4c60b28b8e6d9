#ifndef VELA_TESTS_DESCRIPTIVE_PLAIN_SUM_HPP
#define VELA_TESTS_DESCRIPTIVE_PLAIN_SUM_HPP

namespace vela::test {

/// The compensated sum as it is defined, one operation after the other.
struct PlainSum {
    double sum = 0.0;
    double compensation = 0.0;

    void add(double t) {
        const double y = compensation + t;
        const double u = sum + y;
        compensation = y - (u - sum);
        sum = u;
    }
};

}  // namespace vela::test

#endif

#ifndef VELA_KERNELS_REAL_FUNCTIONS_HPP
#define VELA_KERNELS_REAL_FUNCTIONS_HPP

#include "kernels/incomplete_gamma.hpp"

/// Equations f(x) = 0 for regula_falsi_root(): each carries its target and its own tolerances.
namespace vela::kernels {

class CmRealFunction {
public:
    CmRealFunction(const CmRealFunction&) = default;
    virtual CmRealFunction& operator=(const CmRealFunction& other) = default;
    virtual ~CmRealFunction() = default;

    /// The distance of the function from its target at x.
    virtual double evaluate(double x) = 0;

    virtual double absolute_x_tolerance() const { return m_absoluteXTolerance; }
    virtual double relative_x_tolerance() const { return m_relativeXTolerance; }
    virtual double absolute_f_tolerance() const { return m_absoluteFTolerance; }
    virtual double relative_f_tolerance() const { return m_relativeFTolerance; }

    /// Whether the bracket [a, b] is narrow enough. Strict, unlike value_converged().
    virtual bool interval_converged(double a, double b) const;

    /// Whether the value f counts as a root. Inclusive, deliberately.
    virtual bool value_converged(double f) const;

    /// Whether the unknown is an integer, as in a discrete distribution.
    bool is_integer() const { return m_isInteger; }

protected:
    struct Tolerances {
        double absoluteX;
        double relativeX;
        double absoluteF;
        double relativeF;
    };

    CmRealFunction(bool isInteger, double target, const Tolerances& tolerances);

    double target() const { return m_target; }

private:
    bool m_isInteger;
    double m_target;
    double m_absoluteXTolerance;  // a narrower bracket has converged
    double m_relativeXTolerance;  // the same, relative to the larger end point
    double m_absoluteFTolerance;  // |f| up to here is a root
    double m_relativeFTolerance;  // the same, relative to |target|
};

/// P(Z <= x) - p for a standard normal Z.
class CmStandardNormalCdf : public CmRealFunction {
public:
    explicit CmStandardNormalCdf(double p);
    double evaluate(double x) override;
};

/// P(T <= x) - p for Student's t with df degrees of freedom and noncentrality delta.
class CmTCdf : public CmRealFunction {
public:
    CmTCdf(double df, double noncentrality, double p);
    double evaluate(double x) override;

private:
    double m_df;
    double m_noncentrality;
    double m_probability;
};

/// P(X <= x) - p for the chi-square distribution.
class CmChiSqCdf : public CmRealFunction {
public:
    CmChiSqCdf(double df, double noncentrality, double p);
    double evaluate(double x) override;

private:
    double m_df;
    double m_noncentrality;
    double m_probability;
};

/// P(F <= x) - p for the F distribution.
class CmFCdf : public CmRealFunction {
public:
    CmFCdf(double df1, double df2, double noncentrality, double p);
    double evaluate(double x) override;

private:
    double m_df1;
    double m_df2;
    double m_noncentrality;
    double m_probability;
};

/// P(X <= x) - p for the gamma distribution with unit scale.
class CmGammaCdf : public CmRealFunction {
public:
    CmGammaCdf(double shape, double p);
    double evaluate(double x) override;

private:
    GammaShape m_shape;
    double m_probability;
};

/// P(X <= x) - p for the number X of non-events before the given number of events.
class CmNegBinomialCdf : public CmRealFunction {
public:
    CmNegBinomialCdf(double eventProbability, double eventCount, double p);
    double evaluate(double x) override;

private:
    double m_eventProbability;
    double m_eventCount;
    double m_probability;
};

/// (x^lambda - (1 - x)^lambda) / lambda - target: the quantile function of Tukey's lambda
/// distribution, so that solving it inverts the quantile.
class CmLambdaTransform : public CmRealFunction {
public:
    CmLambdaTransform(double lambda, double target);
    double evaluate(double x) override;

private:
    double m_lambda;
};

/// -2 ln of the likelihood of the event probability over that of the observed share, with x events
/// in the given number of trials; minus target. It grows to both sides of the expected count. The
/// two parameters are positive, the probability below 1; x outside 0..trials has no likelihood
/// (MissingValue).
class CmLRatio : public CmRealFunction {
public:
    CmLRatio(double trials, double eventProbability, double target);
    double evaluate(double x) override;

private:
    double m_trials;
    double m_eventProbability;
};

}  // namespace vela::kernels

#endif

#ifndef VELA_CLUSTERING_LINKAGE_HPP
#define VELA_CLUSTERING_LINKAGE_HPP

namespace vela::clustering {

/// A cluster of the run. Its parts are there only while a merge is worked out: the list of steps
/// says all that a tree of shared nodes could, and ending a tree that is one long chain, as single
/// linkage makes them, would take a stack as deep as the chain.
struct Cluster {
    int id = 0;             ///< the lowest row in it
    double distance = 0.0;  ///< at which it was formed
    int size = 1;           ///< rows in it
    const Cluster* first = nullptr;
    const Cluster* second = nullptr;
};

/// A linkage rule. Lance & Williams (1967), A general theory of classificatory sorting strategies,
/// Computer Journal 9.
///
/// The run takes the final classes as template arguments: a virtual call for each of n^2 / 2 pairs
/// would cost more than the formula.
class LinkFunction {
public:
    virtual ~LinkFunction() = default;

    /// The distance from `merged` (cluster i with cluster j) to a cluster k of n_k rows.
    virtual double update(double d_ij, double d_ik, double d_jk, const Cluster& merged,
                          int n_k) const = 0;

protected:
    LinkFunction() = default;
    LinkFunction(const LinkFunction&) = default;
    LinkFunction& operator=(const LinkFunction&) = default;
};

class AverageLinkage final : public LinkFunction {
public:
    double update(double /*d_ij*/, double d_ik, double d_jk, const Cluster& merged,
                  int /*n_k*/) const override {
        const double n_i = merged.first->size;
        const double n_j = merged.second->size;
        return (n_i * d_ik + n_j * d_jk) / merged.size;
    }
};

class SingleLinkage final : public LinkFunction {
public:
    double update(double /*d_ij*/, double d_ik, double d_jk, const Cluster& /*merged*/,
                  int /*n_k*/) const override {
        return d_jk < d_ik ? d_jk : d_ik;
    }
};

class CompleteLinkage final : public LinkFunction {
public:
    double update(double /*d_ij*/, double d_ik, double d_jk, const Cluster& /*merged*/,
                  int /*n_k*/) const override {
        return d_jk > d_ik ? d_jk : d_ik;
    }
};

class WardLinkage final : public LinkFunction {
public:
    double update(double d_ij, double d_ik, double d_jk, const Cluster& merged,
                  int n_k) const override {
        const double n_i = merged.first->size;
        const double n_j = merged.second->size;
        const double n_ij = merged.size;
        return ((n_i + n_k) * d_ik + (n_j + n_k) * d_jk - n_k * d_ij) / (n_ij + n_k);
    }
};

class McQuittyLinkage final : public LinkFunction {
public:
    double update(double /*d_ij*/, double d_ik, double d_jk, const Cluster& /*merged*/,
                  int /*n_k*/) const override {
        return (d_ik + d_jk) * 0.5;
    }
};

class MedianLinkage final : public LinkFunction {
public:
    double update(double d_ij, double d_ik, double d_jk, const Cluster& /*merged*/,
                  int /*n_k*/) const override {
        return (d_ik + d_jk) * 0.5 - d_ij * 0.25;
    }
};

class CentroidLinkage final : public LinkFunction {
public:
    double update(double d_ij, double d_ik, double d_jk, const Cluster& merged,
                  int /*n_k*/) const override {
        const double n_i = merged.first->size;
        const double n_j = merged.second->size;
        const double n_ij = merged.size;
        return (n_i * d_ik + n_j * d_jk) / n_ij - n_i * n_j * d_ij / (n_ij * n_ij);
    }
};

}  // namespace vela::clustering

#endif

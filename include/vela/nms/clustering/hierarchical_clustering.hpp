#ifndef VELA_NMS_CLUSTERING_HIERARCHICAL_CLUSTERING_HPP
#define VELA_NMS_CLUSTERING_HIERARCHICAL_CLUSTERING_HPP

#include "vela/api.hpp"
#include "vela/nms/clustering/cluster_step.hpp"
#include "vela/nms/clustering/distance_matrix.hpp"
#include "vela/nms/types/vector.hpp"

#include <cstdint>

/// Agglomerative hierarchical clustering: from one cluster per row, the two closest clusters are
/// merged until one is left.
///
/// The functions return a new vector that the caller deletes, and throw std::bad_alloc, with
/// nothing leaked, when memory runs out. They work under whatever floating-point state the caller
/// left and give it back.
namespace vela::nms::clustering {

/// The distance from a merged cluster to another one k, from the distances d_ik and d_jk of its
/// parts i and j, their distance d_ij and the numbers of rows n.
enum class LinkageEnums : std::int32_t {
    Average = 1000,   ///< (n_i d_ik + n_j d_jk) / (n_i + n_j)
    Single = 1001,    ///< the smaller of d_ik and d_jk
    Complete = 1002,  ///< the larger of d_ik and d_jk
    /// ((n_i + n_k) d_ik + (n_j + n_k) d_jk - n_k d_ij) / (n_i + n_j + n_k)
    Ward = 1003,
    McQuitty = 1004,  ///< (d_ik + d_jk) / 2
    Median = 1005,    ///< (d_ik + d_jk) / 2 - d_ij / 4
    /// (n_i d_ik + n_j d_jk) / (n_i + n_j) - n_i n_j d_ij / (n_i + n_j)^2
    Centroid = 1006
};

/// Merges the rows of a distance matrix into one cluster.
///
/// The formulas are applied to the distances as they stand: Ward, median and centroid are meant for
/// squared Euclidean distances. With median and centroid a merge may be closer than the one before.
///
/// Among equal distances the higher rows merge first, with one exception: a row remembers its
/// nearest later row, the last of equally near ones, until one of the two is merged or a merged
/// cluster comes strictly nearer. Of equally near remembered pairs the one with the highest rows is
/// taken.
///
/// NaN is no distance: such pairs merge last, at NaN, the two highest rows first.
///
/// @param linkage    1000 to 1006; for anything else the result is null, and "invalid linkage" is
///                   written to the standard output
/// @param reference  the distance at which the similarity is 0; if it is not positive and finite,
///                   the largest finite distance of the matrix, and 1 if that is not positive
/// @param distances  overwritten: afterwards d(k, i) is the distance of the clusters k and i when
///                   the first of them was merged into a lower row. Untouched after std::bad_alloc
/// @return n - 1 steps in the order of merging; none for n = 0 and 1
/// @see Lance & Williams (1967), A general theory of classificatory sorting strategies, Computer
///      Journal 9; Anderberg (1973), Cluster analysis for applications, ch. 6
VELA_API types::IReadableVector<ClusterStep>* RunClustering(LinkageEnums linkage, double reference,
                                                            DistanceMatrix& distances);

/// Cluster numbers of the rows after the first steps, up to but without the first one whose
/// distance is greater than @p cut, or NaN.
///
/// @param steps  of RunClustering() for n = steps.size() + 1 rows
/// @param cut    a distance; a merge at exactly this distance is included
/// @return a number for each row: 1, 2, ... in order of first appearance
VELA_API types::IReadableVector<int>* FindMembersWithCut(
    const types::IReadableVector<ClusterStep>& steps, double cut);

/// Cluster numbers of the rows when @p count clusters are left.
///
/// @param steps  of RunClustering() for n = steps.size() + 1 rows
/// @param count  number of clusters; clamped to 1..n
/// @return a number for each row: 1, 2, ... in order of first appearance
VELA_API types::IReadableVector<int>* FindMembersWithNumber(
    const types::IReadableVector<ClusterStep>& steps, int count);

}  // namespace vela::nms::clustering

#endif

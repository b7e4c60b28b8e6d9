#ifndef VELA_NMS_CLUSTERING_CLUSTER_STEP_HPP
#define VELA_NMS_CLUSTERING_CLUSTER_STEP_HPP

#include "vela/api.hpp"

namespace vela::nms::clustering {

/// One merge of two clusters. A cluster is known by its lowest row.
struct VELA_API ClusterStep {
    double similarity;  ///< (1 - distance / reference distance) * 100
    double distance;    ///< between the two clusters, as the linkage defines it
    int cluster1;       ///< the lower row, which the merged cluster keeps
    int cluster2;       ///< the higher row, which disappears
    int size;           ///< rows in the merged cluster
};

}  // namespace vela::nms::clustering

#endif

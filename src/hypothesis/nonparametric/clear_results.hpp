#ifndef VELA_HYPOTHESIS_NONPARAMETRIC_CLEAR_RESULTS_HPP
#define VELA_HYPOTHESIS_NONPARAMETRIC_CLEAR_RESULTS_HPP

namespace vela::hypothesis {

/// Makes the record as new, so that what a test cannot compute is NaN, but for the sample sizes
/// that the caller has set.
template <class Record, class... Size>
void clear_results(Record* record, Size Record::*... sizes) {
    Record cleared;
    ((cleared.*sizes = record->*sizes), ...);
    *record = cleared;
}

}  // namespace vela::hypothesis

#endif

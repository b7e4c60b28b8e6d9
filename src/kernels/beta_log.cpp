// ln s in two doubles by table look-up: s = 2^k m with m in [1, 2), c a reciprocal of the midpoint
// of m's cell rounded to 9 bits, so that
//   ln s = k ln 2 - ln c + ln(1 + z),  z = c m - 1 exact in two doubles, |z| < 1/119.
// The series of ln(1 + z) needs two doubles for its first two terms only: from the third on, the
// rounding of a double is below 2^-66 of the sum.

#include "kernels/beta_log.hpp"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace vela::kernels {
namespace {

/// Where the series in d alone is used: |d| below this.
constexpr double kSeriesBound = 1.0 / 64.0;

constexpr double kLn2Hi = 0.6931471805592082;  // 40 bits: its product with an exponent is exact
constexpr double kLn2Lo = 7.371002565167799e-13;

struct LogCell {
    double reciprocal;  // c
    double hi, lo;      // -ln c
};

constexpr LogCell kLogCells[64] = {
    {0.9921875, 0.007843177461025893, 2.764708154124904e-19},
    {0.9765625, 0.023716526617316044, -1.5774243488668215e-18},
    {0.962890625, 0.03781545099681768, -1.4251832364060063e-19},
    {0.947265625, 0.054175734102024586, 1.6459865414896682e-18},
    {0.93359375, 0.06871389254805181, -2.5298812881248404e-18},
    {0.919921875, 0.08346653102309004, -4.417797553075552e-18},
    {0.908203125, 0.09628721945215148, -3.4322603532248472e-18},
    {0.89453125, 0.11145544092532282, 5.685957919022839e-18},
    {0.8828125, 0.1246424452072766, -5.808912678940971e-18},
    {0.87109375, 0.13800567301944372, -3.082753002960249e-18},
    {0.859375, 0.15154989812720093, 5.1669593684615594e-18},
    {0.84765625, 0.16528009093910292, -6.262313551919987e-19},
    {0.8359375, 0.179201429457711, -1.0785017454858423e-17},
    {0.826171875, 0.1909524459932298, 1.2753558105240179e-17},
    {0.814453125, 0.20523840324070633, 6.493380582797194e-18},
    {0.8046875, 0.2173012756899814, 1.6168452453763015e-18},
    {0.794921875, 0.2295114395969128, -1.2166730011885714e-17},
    {0.78515625, 0.24187253642048673, -3.5869293176775316e-18},
    {0.775390625, 0.2543883443523174, -1.428296341374898e-17},
    {0.765625, 0.26706278524904525, -7.32891532732017e-18},
    {0.7578125, 0.27731928541623435, -7.44528405583513e-18},
    {0.748046875, 0.2902896358588618, -1.055555326711204e-17},
    {0.740234375, 0.30078841995708144, -6.252253064633693e-18},
    {0.73046875, 0.31406882762497584, 7.311073985078525e-18},
    {0.72265625, 0.32482161940123766, -3.7162556628635935e-18},
    {0.71484375, 0.33569129163814154, -7.183773020381283e-18},
    {0.70703125, 0.3466804132137367, 1.2904632283500345e-17},
    {0.69921875, 0.3577916386388075, 4.844823767868267e-18},
    {0.69140625, 0.36902771190573336, -2.4362468710901017e-17},
    {0.68359375, 0.38039147055604844, -1.7802599561805317e-17},
    {0.677734375, 0.38899984509264857, 2.615430564602486e-17},
    {0.669921875, 0.4005941778735679, -1.0993372990980253e-17},
    {0.6640625, 0.4093790074293007, -1.1994027281528269e-17},
    {0.65625, 0.42121346507630353, 2.2407148500765553e-17},
    {0.650390625, 0.43018213505906394, 1.614521793019989e-17},
    {0.642578125, 0.4422668742741359, -1.9863643748808186e-17},
    {0.63671875, 0.4514272436728001, 1.4289478116296355e-17},
    {0.630859375, 0.46067230181685126, -1.5062844057841697e-17},
    {0.625, 0.4700036292457356, -2.3229412495470032e-17},
    {0.619140625, 0.47942285116222716, 1.1205799895726741e-17},
    {0.61328125, 0.4889316391312544, -7.298935579038195e-18},
    {0.607421875, 0.49853171286027365, 4.7214991692366815e-18},
    {0.6015625, 0.5082248420659333, -7.588768892523324e-18},
    {0.595703125, 0.5180128484320962, -9.73640449019127e-19},
    {0.58984375, 0.5278976076646381, 3.3285403760785623e-17},
    {0.583984375, 0.5378810516488214, -2.6530654036426642e-17},
    {0.580078125, 0.5445924862368081, 5.1100039125950683e-17},
    {0.57421875, 0.5547448577008262, 1.874269083710547e-17},
    {0.568359375, 0.5650013578680153, -3.688482912266732e-17},
    {0.564453125, 0.5718979369270756, 4.566123856634652e-17},
    {0.55859375, 0.5823328142196552, -1.9626643627806023e-17},
    {0.5546875, 0.5893503868783018, -2.3920619442246964e-17},
    {0.548828125, 0.5999699557057621, -3.949092351861188e-17},
    {0.544921875, 0.6071128432181422, -2.8085288209567376e-17},
    {0.541015625, 0.6143071188521693, 1.995255305081987e-17},
    {0.53515625, 0.6251965186514375, 1.0592894454709713e-17},
    {0.53125, 0.6325225587435105, -2.1085297878853066e-17},
    {0.52734375, 0.639902666041133, 3.1794937859343885e-17},
    {0.521484375, 0.6510759666392583, -8.371097544566138e-18},
    {0.517578125, 0.6585947990532856, 2.4849574516590868e-17},
    {0.513671875, 0.6661705928617432, 5.100256216890502e-17},
    {0.509765625, 0.6738042177168144, -4.9440311959525054e-17},
    {0.505859375, 0.68149656333997, 3.903916730740935e-17},
    {0.501953125, 0.6892485401442879, 5.082062716370886e-17},
};

/// 1/3 - d/4 + d^2/5 - ..., the series of (ln(1 + d) - d + d^2/2) / d^3, for |d| <= 1/64.
double third_order_rest(double d) {
    const double d2 = d * d;
    const double even =
        1.0 / 3 + d2 * (1.0 / 5 + d2 * (1.0 / 7 + d2 * (1.0 / 9 + d2 * (1.0 / 11))));
    const double odd =
        1.0 / 4 + d2 * (1.0 / 6 + d2 * (1.0 / 8 + d2 * (1.0 / 10 + d2 * (1.0 / 12))));
    return even - d * odd;
}

/// d^2/2 - d^3/3 + ..., for |d| <= 1/64.
DoubleDouble small_deficit(DoubleDouble d) {
    const DoubleDouble square = two_product(d.hi, d.hi);
    const double cube = square.hi * d.hi * third_order_rest(d.hi);
    const DoubleDouble sum = quick_two_sum(0.5 * square.hi, -cube);
    return {sum.hi, sum.lo + (0.5 * square.lo + d.hi * d.lo)};
}

/// a - b where |a| > |b|
DoubleDouble difference(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble d = quick_two_sum(a.hi, -b.hi);
    return {d.hi, d.lo + (a.lo - b.lo)};
}

}  // namespace

DoubleDouble log_two_doubles(DoubleDouble s) {
    double shift = 1023.0;
    if (s.hi < 1e-290) {  // denormal numbers have no leading bit to take the exponent from
        s = {s.hi * 0x1p200, s.lo * 0x1p200};
        shift += 200.0;
    }
    const auto bits = std::bit_cast<std::uint64_t>(s.hi);
    const auto biased = static_cast<std::int64_t>(bits >> 52);
    const auto cellIndex = static_cast<std::size_t>((bits >> 46) & 63);
    const double m = std::bit_cast<double>((bits & 0x000FFFFFFFFFFFFFu) | 0x3FF0000000000000u);
    const double scale = std::bit_cast<double>(static_cast<std::uint64_t>(2046 - biased) << 52);
    const LogCell& cell = kLogCells[cellIndex];
    const double mHi = leading_half(m);
    const DoubleDouble z = two_sum(cell.reciprocal * mHi - 1.0,
                                   cell.reciprocal * (m - mHi) + cell.reciprocal * (s.lo * scale));
    const double k = static_cast<double>(biased) - shift;
    const DoubleDouble coarse = two_sum(k * kLn2Hi, cell.hi);
    const DoubleDouble base = quick_two_sum(coarse.hi, coarse.lo + (k * kLn2Lo + cell.lo));
    const DoubleDouble rest = difference(z, small_deficit(z));
    const DoubleDouble sum = two_sum(base.hi, rest.hi);
    return {sum.hi, sum.lo + (rest.lo + base.lo)};
}

DoubleDouble log1p_two_doubles(DoubleDouble d) {
    if (std::fabs(d.hi) <= kSeriesBound) {
        return difference(d, small_deficit(d));
    }
    return log_two_doubles(DoubleDouble{1.0, 0.0} + d);
}

DoubleDouble log1p_deficit(DoubleDouble d) {
    if (std::fabs(d.hi) <= kSeriesBound) {
        return small_deficit(d);
    }
    return d - log_two_doubles(DoubleDouble{1.0, 0.0} + d);
}

}  // namespace vela::kernels

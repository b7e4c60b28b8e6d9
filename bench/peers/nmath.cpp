// nmath, the C library of R's distribution functions. It has no procedures on samples.

#include "functions.hpp"

#define MATHLIB_STANDALONE
#include <Rmath.h>  // last, because it defines short names as macros

namespace bench {
namespace {

using P = Parameters;

constexpr int kLower = 1;
constexpr int kNoLog = 0;

[[maybe_unused]] const bool added = add_peer(
    {"nmath",
     {
         point<[](double x, const P& p) { return pnorm(x, p[0], p[1], kLower, kNoLog); }>(
             "NormalCdf"),
         point<[](double x, const P& p) { return qnorm(x, p[0], p[1], kLower, kNoLog); }>(
             "NormalInvCdf"),
         point<[](double x, const P& p) { return pt(x, p[0], kLower, kNoLog); }>("TCdf"),
         point<[](double x, const P& p) { return qt(x, p[0], kLower, kNoLog); }>("TInvCdf"),
         point<[](double x, const P& p) { return pnt(x, p[0], p[1], kLower, kNoLog); }>(
             "NoncentralTCdf"),
         point<[](double x, const P& p) { return qnt(x, p[0], p[1], kLower, kNoLog); }>(
             "NoncentralTInvCdf"),
     },
     {}});

}  // namespace
}  // namespace bench

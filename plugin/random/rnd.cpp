// SPDX-License-Identifier: MIT
#include "plugin/random/rnd.h"

namespace dastrel {

namespace {

constexpr int N = CRandom::block;
constexpr int M = 397;
constexpr std::uint64_t upper_mask = 0x80000000;
constexpr std::uint64_t lower_mask = 0x7fffffff;

std::uint64_t twist(std::uint64_t current, std::uint64_t following, std::uint64_t distant)
{
    static constexpr std::uint64_t mag01[2] = {0, 0x9908b0df};
    const std::uint64_t y = (current & upper_mask) | (following & lower_mask);
    return distant ^ (y >> 1) ^ mag01[y & 1];
}

} // namespace

CRandom::CRandom() : mt(new std::uint64_t[N]), mti(N + 1) {}

CRandom::~CRandom() { delete[] mt; }

void CRandom::randomize(std::uint64_t seed)
{
    if (seed == 0)
        seed = 4357;
    for (int i = 0; i < N; ++i) {
        mt[i] = seed & 0xffff0000;
        seed = 69069 * seed + 1;
        mt[i] |= (seed & 0xffff0000) >> 16;
        seed = 69069 * seed + 1;
    }
    mti = N;
}

void CRandom::regenerate()
{
    if (mti == N + 1)
        randomize(0);
    for (int k = 0; k < N - M; ++k)
        mt[k] = twist(mt[k], mt[k + 1], mt[k + M]);
    for (int k = N - M; k < N - 1; ++k)
        mt[k] = twist(mt[k], mt[k + 1], mt[k + M - N]);
    mt[N - 1] = twist(mt[N - 1], mt[0], mt[M - 1]);
    mti = 0;
}

} // namespace dastrel

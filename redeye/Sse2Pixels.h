// SSE2 kernels for eight pixels at a time (both the native build and the
// 32-bit module have SSE2). They give exactly the bytes of the scalar
// conversions; the colour tests check them against every input.
//
// Eight interleaved 3-channel pixels of 16-bit values fill three registers.
// Masking them apart leaves the channels in the lane order 0,3,6,1,4,7,2,5
// of the pixels; all arithmetic is per lane, so the kernels work in that
// order and interleave back the same way.
#pragma once

#if defined(__SSE2__)
#include <emmintrin.h>

#include <cstdint>

namespace sse2 {

struct Pixels8 {
    __m128i c0, c1, c2;  // first, second and third channel, permuted lane order
};

inline __m128i Blend(__m128i mask, __m128i ifSet, __m128i ifClear) {
    return _mm_or_si128(_mm_and_si128(mask, ifSet), _mm_andnot_si128(mask, ifClear));
}

inline __m128i Words(int16_t value) { return _mm_set1_epi16(value); }

// Lane i of the result is lane i + n (RotateDown) or i - n (RotateUp), mod 8.
template <int n>
inline __m128i RotateDown(__m128i v) {
    return _mm_or_si128(_mm_srli_si128(v, 2 * n), _mm_slli_si128(v, 16 - 2 * n));
}
template <int n>
inline __m128i RotateUp(__m128i v) {
    return _mm_or_si128(_mm_slli_si128(v, 2 * n), _mm_srli_si128(v, 16 - 2 * n));
}

inline __m128i Pick(__m128i a, __m128i b, __m128i c) {
    const __m128i lanes036 = _mm_setr_epi16(-1, 0, 0, -1, 0, 0, -1, 0);
    const __m128i lanes147 = _mm_setr_epi16(0, -1, 0, 0, -1, 0, 0, -1);
    const __m128i lanes25 = _mm_setr_epi16(0, 0, -1, 0, 0, -1, 0, 0);
    return _mm_or_si128(_mm_or_si128(_mm_and_si128(a, lanes036), _mm_and_si128(b, lanes147)),
                        _mm_and_si128(c, lanes25));
}

// a, b, c: the 24 interleaved words of eight pixels.
inline Pixels8 Deinterleave(__m128i a, __m128i b, __m128i c) {
    return {Pick(a, b, c), RotateDown<1>(Pick(c, a, b)), RotateDown<2>(Pick(b, c, a))};
}

inline void Interleave(const Pixels8& p, __m128i* a, __m128i* b, __m128i* c) {
    const __m128i second = RotateUp<1>(p.c1), third = RotateUp<2>(p.c2);
    *a = Pick(p.c0, second, third);
    *b = Pick(third, p.c0, second);
    *c = Pick(second, third, p.c0);
}

inline Pixels8 LoadBytes(const uint8_t* pixels) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i first = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels));
    const __m128i last = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(pixels + 16));
    return Deinterleave(_mm_unpacklo_epi8(first, zero), _mm_unpackhi_epi8(first, zero),
                        _mm_unpacklo_epi8(last, zero));
}

// Keeps the low byte of every value, as a store into a byte does.
inline void StoreBytes(const Pixels8& p, uint8_t* pixels) {
    __m128i a, b, c;
    Interleave(p, &a, &b, &c);
    const __m128i lowByte = Words(0xFF);
    a = _mm_and_si128(a, lowByte);
    b = _mm_and_si128(b, lowByte);
    c = _mm_and_si128(c, lowByte);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), _mm_packus_epi16(a, b));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(pixels + 16), _mm_packus_epi16(c, c));
}

inline Pixels8 LoadWords(const uint16_t* values) {
    const auto* v = reinterpret_cast<const __m128i*>(values);
    return Deinterleave(_mm_loadu_si128(v), _mm_loadu_si128(v + 1), _mm_loadu_si128(v + 2));
}

inline void StoreWords(const Pixels8& p, uint16_t* values) {
    __m128i a, b, c;
    Interleave(p, &a, &b, &c);
    auto* v = reinterpret_cast<__m128i*>(values);
    _mm_storeu_si128(v, a);
    _mm_storeu_si128(v + 1, b);
    _mm_storeu_si128(v + 2, c);
}

// floor(n / d) for unsigned 16-bit n and 1 <= d <= 510. A single-precision
// quotient is exact after truncation: an exact quotient is representable,
// and otherwise the rounding error, below q * 2^-24 < 2^-8 / d, is smaller
// than the distance 1 / d to the next integer.
inline __m128i DivideWords(__m128i n, __m128i d) {
    const __m128i zero = _mm_setzero_si128();
    const __m128 low = _mm_div_ps(_mm_cvtepi32_ps(_mm_unpacklo_epi16(n, zero)),
                                  _mm_cvtepi32_ps(_mm_unpacklo_epi16(d, zero)));
    const __m128 high = _mm_div_ps(_mm_cvtepi32_ps(_mm_unpackhi_epi16(n, zero)),
                                   _mm_cvtepi32_ps(_mm_unpackhi_epi16(d, zero)));
    return _mm_packs_epi32(_mm_cvttps_epi32(low), _mm_cvttps_epi32(high));
}

// Constant divisions by multiplication with a rounded-up reciprocal; each
// stays exact over the stated numerators (error below 1 / divisor).
inline __m128i DivideBy240(__m128i n) {  // n < 2^16
    return _mm_srli_epi16(_mm_mulhi_epu16(n, Words(int16_t(34953))), 7);
}
inline __m128i DivideBy34(__m128i n) {  // n < 2^13
    return _mm_srli_epi16(_mm_mulhi_epu16(n, Words(30841)), 4);
}
inline __m128i DivideBy40TowardZero(__m128i n) {  // |n| < 2^15
    const __m128i sign = _mm_srai_epi16(n, 15);
    const __m128i magnitude = _mm_sub_epi16(_mm_xor_si128(n, sign), sign);
    const __m128i quotient = _mm_srli_epi16(_mm_mulhi_epu16(magnitude, Words(int16_t(52429))), 5);
    return _mm_sub_epi16(_mm_xor_si128(quotient, sign), sign);
}

// RGB bytes (as words) to hue, lightness, saturation. The lightness
// ((max+min)*240 + 255) / 510 is (16*(max+min) + 17) / 34; a channel's
// distance below the maximum is 0 for the maximum, 40 for the minimum and
// needs a division only for the middle channel.
inline Pixels8 RgbToHls8(const Pixels8& rgb) {
    const __m128i r = rgb.c0, g = rgb.c1, b = rgb.c2;
    const __m128i max = _mm_max_epi16(_mm_max_epi16(r, g), b);
    const __m128i min = _mm_min_epi16(_mm_min_epi16(r, g), b);
    const __m128i sum = _mm_add_epi16(max, min);
    const __m128i lightness = DivideBy34(_mm_add_epi16(_mm_slli_epi16(sum, 4), Words(17)));
    const __m128i delta = _mm_sub_epi16(max, min);
    const __m128i one = Words(1);

    const __m128i upperHalf = _mm_cmpgt_epi16(lightness, Words(120));
    const __m128i spread =
        _mm_max_epi16(Blend(upperHalf, _mm_sub_epi16(Words(510), sum), sum), one);
    const __m128i saturation = DivideWords(
        _mm_add_epi16(_mm_mullo_epi16(delta, Words(240)), _mm_srli_epi16(spread, 1)), spread);

    const __m128i middle = _mm_sub_epi16(_mm_add_epi16(_mm_add_epi16(r, g), b), sum);
    const __m128i middleBelow =
        DivideWords(_mm_add_epi16(_mm_mullo_epi16(_mm_sub_epi16(max, middle), Words(40)),
                                  _mm_srli_epi16(delta, 1)),
                    _mm_max_epi16(delta, one));
    // With the maximum and the minimum channel known, the hue is a base plus
    // or minus the middle channel's distance:
    //   red max:   green min: -40 + q   else 40 - q
    //   green max: red min:   120 - q   else 40 + q
    //   blue max:  red min:   120 + q   else 200 - q
    // (red beats a tie for the maximum, green beats blue; channels tied at
    // the minimum give the same hue either way).
    const __m128i redMax = _mm_cmpeq_epi16(r, max);
    const __m128i greenMax = _mm_andnot_si128(redMax, _mm_cmpeq_epi16(g, max));
    const __m128i greenMin = _mm_cmpeq_epi16(g, min), redMin = _mm_cmpeq_epi16(r, min);
    const __m128i base = Blend(redMax, Blend(greenMin, Words(-40), Words(40)),
                               Blend(greenMax, Blend(redMin, Words(120), Words(40)),
                                     Blend(redMin, Words(120), Words(200))));
    const __m128i subtract = Blend(redMax, _mm_andnot_si128(greenMin, Words(-1)),
                                   Blend(greenMax, redMin, _mm_andnot_si128(redMin, Words(-1))));
    __m128i hue =
        _mm_add_epi16(base, _mm_sub_epi16(_mm_xor_si128(middleBelow, subtract), subtract));
    hue = _mm_add_epi16(hue, _mm_and_si128(_mm_cmplt_epi16(hue, _mm_setzero_si128()), Words(240)));

    const __m128i grey = _mm_cmpeq_epi16(delta, _mm_setzero_si128());
    return {Blend(grey, Words(160), hue), lightness, _mm_andnot_si128(grey, saturation)};
}

// Hue, lightness, saturation to RGB for hue <= 240, lightness <= 255 and
// saturation <= 240 (all the pipeline produces). In each 40-step sector of
// the hue circle one channel is m2, one m1 and one ramps between them by
// the hue's distance into the sector (rising in even sectors, falling in
// odd ones); hue 240 behaves as 0. (c*255 + 120) / 240 is c + (c + 8) / 16
// and L*255/240 is L + L/16, exactly, for c, L >= 0.
inline Pixels8 HlsToRgb8(const Pixels8& hls) {
    const __m128i hue = hls.c0, lightness = hls.c1, saturation = hls.c2;
    // m2 is L + q below lightness 121 and L + S - q above, with
    // q = (L*S + 120) / 240 (L*(240 + S) + 120 over 240 is L + q exactly).
    const __m128i q =
        DivideBy240(_mm_add_epi16(_mm_mullo_epi16(lightness, saturation), Words(120)));
    const __m128i lowerHalf = _mm_cmplt_epi16(lightness, Words(121));
    const __m128i m2 = _mm_add_epi16(lightness, Blend(lowerHalf, q, _mm_sub_epi16(saturation, q)));
    const __m128i m1 = _mm_sub_epi16(_mm_slli_epi16(lightness, 1), m2);

    const auto atLeast = [&hue](int16_t bound) { return _mm_cmpgt_epi16(hue, Words(bound - 1)); };
    const __m128i from40 = atLeast(40), from80 = atLeast(80), from120 = atLeast(120);
    const __m128i from160 = atLeast(160), from200 = atLeast(200), from240 = atLeast(240);
    const __m128i eighty = Words(80);
    __m128i inPair = _mm_sub_epi16(hue, _mm_and_si128(from80, eighty));  // hue mod 80
    inPair = _mm_sub_epi16(inPair, _mm_and_si128(from160, eighty));
    inPair = _mm_sub_epi16(inPair, _mm_and_si128(from240, eighty));
    const __m128i step =
        Blend(_mm_cmplt_epi16(inPair, Words(40)), inPair, _mm_sub_epi16(eighty, inPair));
    const __m128i ramp =
        _mm_add_epi16(m1, DivideBy40TowardZero(_mm_add_epi16(
                              _mm_mullo_epi16(_mm_sub_epi16(m2, m1), step), Words(20))));

    const auto scale = [](__m128i c) {
        return _mm_add_epi16(c, _mm_srli_epi16(_mm_add_epi16(c, Words(8)), 4));
    };
    const __m128i top = scale(m2), bottom = scale(m1), middle = scale(ramp);
    const auto between = [](__m128i from, __m128i to) { return _mm_andnot_si128(to, from); };
    const __m128i sector0 = _mm_or_si128(_mm_andnot_si128(from40, _mm_set1_epi16(-1)), from240);
    const __m128i sector1 = between(from40, from80), sector2 = between(from80, from120);
    const __m128i sector3 = between(from120, from160), sector4 = between(from160, from200);
    const __m128i sector5 = between(from200, from240);
    const __m128i red = Blend(_mm_or_si128(sector0, sector5), top,
                              Blend(_mm_or_si128(sector1, sector4), middle, bottom));
    const __m128i green = Blend(_mm_or_si128(sector1, sector2), top,
                                Blend(_mm_or_si128(sector0, sector3), middle, bottom));
    const __m128i blue = Blend(_mm_or_si128(sector3, sector4), top,
                               Blend(_mm_or_si128(sector2, sector5), middle, bottom));

    const __m128i grey = _mm_add_epi16(lightness, _mm_srli_epi16(lightness, 4));
    const __m128i isGrey = _mm_cmpeq_epi16(saturation, _mm_setzero_si128());
    return {Blend(isGrey, grey, red), Blend(isGrey, grey, green), Blend(isGrey, grey, blue)};
}

}  // namespace sse2

#endif

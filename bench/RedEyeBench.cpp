// Pipeline speed on synthetic portraits of 0.06, 1 and 16 megapixels, in
// megapixels a second, against the literal reference of the tests and the
// streaming floor; the ratios are printed after the table.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "bench/StreamingFloor.h"
#include "redeye/Pipeline.h"
#include "tests/native/LiteralPipeline.h"
#include "tests/native/RegionBuffers.h"
#include "tests/native/TestImages.h"

namespace {

constexpr float kTolerance = 50, kDarkening = 50;

struct Picture {
    int32_t width, height;
    std::vector<uint8_t> rgb;
    RegionBuffers buffers;

    Picture(int32_t w, int32_t h) : width(w), height(h), rgb(3 * size_t(w) * h), buffers(w, h) {
        PaintPortrait(rgb.data(), w, h, 1);
    }

    // Fresh input in zero-filled buffers, as the driver hands them over.
    void Reset() {
        for (auto* bytes : {&buffers.weight, &buffers.coverage, &buffers.depth})
            std::fill(bytes->begin(), bytes->end(), 0);
        std::fill(buffers.hls.begin(), buffers.hls.end(), 0);
        std::fill(buffers.distance.begin(), buffers.distance.end(), 0);
        std::copy(rgb.begin(), rgb.end(), buffers.work.begin());
    }
};

Picture& PictureOfSize(int32_t width, int32_t height) {
    static std::map<int64_t, std::unique_ptr<Picture>> pictures;
    std::unique_ptr<Picture>& picture = pictures[int64_t{width} << 32 | height];
    if (!picture) picture = std::make_unique<Picture>(width, height);
    return *picture;
}

template <typename Run>
void Measure(benchmark::State& state, Run run) {
    Picture& picture = PictureOfSize(int32_t(state.range(0)), int32_t(state.range(1)));
    for (auto _ : state) {
        state.PauseTiming();
        picture.Reset();
        state.ResumeTiming();
        run(picture);
        benchmark::ClobberMemory();
    }
    const double pixels = double(picture.width) * picture.height;
    state.counters["MP/s"] =
        benchmark::Counter(pixels * double(state.iterations()) / 1e6, benchmark::Counter::kIsRate);
}

void Pipeline(benchmark::State& state) {
    Measure(state, [](Picture& p) {
        RunRedEyePipeline(p.buffers.View(), p.width, p.height, kTolerance, kDarkening);
    });
}

void Literal(benchmark::State& state) {
    Measure(state, [](Picture& p) {
        literal::RunPipeline(p.buffers.View(), p.width, p.height, kTolerance, kDarkening);
    });
}

void Floor(benchmark::State& state) {
    Measure(state, [](Picture& p) {
        benchmark::DoNotOptimize(StreamWorkingBuffers(p.buffers.View(), p.width, p.height));
    });
}

// Five repetitions of each: on a shared machine single runs vary by a
// quarter and more; the table shows mean, median and spread.
void Sizes(benchmark::internal::Benchmark* b) {
    b->Args({300, 200})->Args({1155, 866})->Args({4619, 3464});
    b->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);
}

BENCHMARK(Pipeline)->Apply(Sizes);
BENCHMARK(Literal)->Apply(Sizes);
BENCHMARK(Floor)->Apply(Sizes);

// Keeps the median real time of every benchmark to print the ratios of
// medians at the end.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") {
                times_[run.run_name.function_name + "/" + run.run_name.args] =
                    run.GetAdjustedRealTime();
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void PrintRatios() const {
        std::printf("\nmedian times\n%-12s %16s %18s\n", "size", "pipeline/floor",
                    "literal/pipeline");
        for (const char* size : {"300/200", "1155/866", "4619/3464"}) {
            const double pipeline = Time("Pipeline", size);
            std::printf("%-12s %16.2f %18.2f\n", size, pipeline / Time("Floor", size),
                        Time("Literal", size) / pipeline);
        }
    }

  private:
    double Time(const char* name, const char* size) const {
        const auto found = times_.find(std::string(name) + "/" + size);
        return found == times_.end() ? 0 : found->second;
    }

    std::map<std::string, double> times_;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintRatios();
    benchmark::Shutdown();
    return 0;
}

// A year of sun times for every city of the table.

#include <benchmark/benchmark.h>

#include <chrono>

#include "sun/sunrise.h"

namespace {

using namespace homewarden;

void year_of_all_cities(benchmark::State& state) {
  const auto first = std::chrono::local_days(std::chrono::year(2023) / 1 / 1);
  for (auto _ : state) {
    for (long city = 0; city < clsSunrise::CityCount(); ++city) {
      clsSunrise sun{Date(first)};
      sun.City(static_cast<double>(city));
      for (int day = 0; day < 365; ++day) {
        sun.DateDay(Date(first + std::chrono::days(day)));
        sun.CalculateSun(sun.TimeZone());
        benchmark::DoNotOptimize(sun.sunset());
      }
    }
  }
}
BENCHMARK(year_of_all_cities)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

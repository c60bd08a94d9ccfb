#pragma once

#include <chrono>
#include <cstddef>
#include <map>

#include "platform/http/address.h"

namespace homewarden::http {

// How often each address may ask: so many times at once, and then as often as a bucket is filled.
// Times are uptimes.
class RateLimit {
 public:
  // `per_second` must not be 0. Of addresses beyond `remembered` the one that asked longest ago is
  // forgotten.
  RateLimit(std::size_t at_once, std::size_t per_second, std::size_t remembered = 1000)
      : at_once_(static_cast<double>(at_once)),
        per_second_(static_cast<double>(per_second)),
        remembered_(remembered) {}

  // Counts one request. Zero when it is taken, otherwise the time after which one will be.
  std::chrono::milliseconds wait(const Address& from, std::chrono::milliseconds now);

 private:
  struct Bucket {
    double tokens = 0;
    std::chrono::milliseconds filled{};
  };

  void forget_one();

  const double at_once_;
  const double per_second_;
  const std::size_t remembered_;
  std::map<Address, Bucket> buckets_;
};

}  // namespace homewarden::http

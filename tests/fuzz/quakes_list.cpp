#include "scan_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  borvane::Compare(borvane::quakes_list_twins, data, size);
  return 0;
}

#include "scan_target.h"

// In both roles.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  borvane::Compare(borvane::world_list_twins, data, size);
  borvane::Compare(borvane::world_headline_twins, data, size);
  return 0;
}

// Arbitrary bytes as a recording: the reader never leaves the buffer, keeps at
// most 32768 samples, and a recording it accepts is written in the current
// layout and read again with the same samples.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "simlink/Recording.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const orv::RecordingRead r = orv::ReadRecording(bytes);
  if (!r.ok) return 0;
  if (r.rec.Samples.empty() || r.rec.Samples.size() > orv::kMaxTraceSamples) std::abort();
  const orv::RecordingRead again = orv::ReadRecording(orv::WriteRecording(r.rec));
  if (!again.ok || again.rec.Samples.size() != r.rec.Samples.size()) std::abort();
  if (std::memcmp(again.rec.Samples.data(), r.rec.Samples.data(), r.rec.Samples.size() * sizeof(orv::TraceSample)))
    std::abort();
  return 0;
}

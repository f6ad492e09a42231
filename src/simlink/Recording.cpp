#include "simlink/Recording.h"

#include <cstring>

#include "core/Runtime.h"
#include "core/TextFormats.h"

namespace orv {

namespace {

void PutU32(std::string& out, std::uint32_t v) {
  for (int i = 0; i < 4; ++i) out.push_back(static_cast<char>((v >> (8 * i)) & 0xFF));
}
void PutI16(std::string& out, std::int16_t v) {
  auto u = static_cast<std::uint16_t>(v);
  out.push_back(static_cast<char>(u & 0xFF));
  out.push_back(static_cast<char>(u >> 8));
}
void PutF32(std::string& out, float v) {
  std::uint32_t u;
  std::memcpy(&u, &v, 4);
  PutU32(out, u);
}
std::uint32_t GetU32(const char* p) {
  auto b = reinterpret_cast<const unsigned char*>(p);
  return b[0] | (b[1] << 8) | (b[2] << 16) | (static_cast<std::uint32_t>(b[3]) << 24);
}
std::int16_t GetI16(const char* p) {
  auto b = reinterpret_cast<const unsigned char*>(p);
  return static_cast<std::int16_t>(b[0] | (b[1] << 8));
}
float GetF32(const char* p) {
  std::uint32_t u = GetU32(p);
  float f;
  std::memcpy(&f, &u, 4);
  return f;
}

void PutSample(std::string& out, const TraceSample& s) {
  PutF32(out, s.Latitude);
  PutF32(out, s.Longitude);
  PutU32(out, static_cast<std::uint32_t>(s.Altitude));
  PutU32(out, static_cast<std::uint32_t>(s.Agl));
  PutF32(out, s.TrueHeading);
  PutI16(out, s.Pitch);
  PutI16(out, s.Bank);
  PutU32(out, static_cast<std::uint32_t>(s.Tas));
}

TraceSample GetSample(const char* p) {
  TraceSample s;
  s.Latitude = GetF32(p);
  s.Longitude = GetF32(p + 4);
  s.Altitude = static_cast<std::int32_t>(GetU32(p + 8));
  s.Agl = static_cast<std::int32_t>(GetU32(p + 12));
  s.TrueHeading = GetF32(p + 16);
  s.Pitch = GetI16(p + 20);
  s.Bank = GetI16(p + 22);
  s.Tas = static_cast<std::int32_t>(GetU32(p + 24));
  return s;
}

}  // namespace

std::int32_t TraceInterval(std::int32_t r) {
  if (r < 200) return 14;
  if (r < 300) return 9;
  return 5;
}

TraceSample SampleOf(const SimSnapshot& snap) {
  TraceSample s;
  s.Latitude = snap.Latitude;
  s.Longitude = snap.Longitude;
  s.Altitude = snap.Altitude;
  s.Agl = snap.Agl;
  s.TrueHeading = snap.TrueHeading;
  s.Pitch = snap.Pitch;
  s.Bank = snap.Bank;
  s.Tas = snap.Tas;
  return s;
}

void ApplySample(const TraceSample& s, SimSnapshot& snap) {
  snap.Latitude = s.Latitude;
  snap.Longitude = s.Longitude;
  snap.Altitude = s.Altitude;
  snap.Agl = s.Agl;
  snap.TrueHeading = s.TrueHeading;
  snap.Pitch = s.Pitch;
  snap.Bank = s.Bank;
  snap.Tas = s.Tas;
}

bool RecordTick(TraceRecorder& rec, const SimSnapshot& snap, std::int32_t r, bool inMenu, bool paused) {
  ++rec.Counter;
  if (rec.Counter <= TraceInterval(r)) return false;
  rec.Counter = 0;
  if (inMenu || paused) return false;
  if (snap.Airborne == 0 && snap.GroundSpeed < 60) return false;
  auto& t = rec.Trace;
  if (t.Samples.size() >= kMaxTraceSamples) return false;
  auto index = static_cast<std::int32_t>(t.Samples.size());
  if (index == 0) {
    rec.Capacity = 5000;
    t.Samples.reserve(5000);
    t.TraceTimes.reserve(5000);
  }
  t.Samples.push_back(SampleOf(snap));
  t.TraceTimes.push_back(FixedText(snap.UtcTimeText, kTraceTimeChars));
  if (index >= rec.Capacity - 1) {
    rec.Capacity += 5000;
    t.Samples.reserve(static_cast<std::size_t>(rec.Capacity));
    t.TraceTimes.reserve(static_cast<std::size_t>(rec.Capacity));
  }
  return true;
}

std::string WriteRecording(const Recording& rec, std::string* error) {
  if (rec.Samples.empty() || rec.Samples.size() > kMaxTraceSamples) {
    if (error)
      *error = rec.Samples.empty() ? "The recording holds no sample."
                                   : "The recording holds " + std::to_string(rec.Samples.size()) +
                                         " samples; a file holds at most 32768.";
    return {};
  }
  std::string out;
  out.reserve(47 + rec.Samples.size() * 36);
  out += kRecMagic;
  out += FixedText(rec.RecDescription, kRecDescriptionChars);
  PutI16(out, static_cast<std::int16_t>(rec.Samples.size() - 1));
  for (std::size_t i = 0; i < rec.Samples.size(); ++i) {
    PutSample(out, rec.Samples[i]);
    out += FixedText(i < rec.TraceTimes.size() ? rec.TraceTimes[i] : std::string(), kTraceTimeChars);
  }
  return out;
}

RecordingRead ReadRecording(std::string_view data) {
  RecordingRead r;
  std::size_t pos = 0;
  if (data.size() >= 5 && data.substr(0, 5) == kRecMagic) {
    pos = 5;
  } else {
    r.rec.OldFormat = true;
  }
  const std::size_t recSize = r.rec.OldFormat ? kTraceSampleBytes : kTraceSampleBytes + kTraceTimeChars;
  if (data.size() < pos + kRecDescriptionChars + 2) {
    r.error = "The recording is truncated: " + std::to_string(data.size()) +
              " bytes, too short for its description and sample count.";
    return r;
  }
  r.rec.RecDescription = RTrim(data.substr(pos, kRecDescriptionChars));
  pos += kRecDescriptionChars;
  std::int16_t traceLast = GetI16(data.data() + pos);
  pos += 2;
  if (traceLast < 0) {
    r.error = "The recording's sample count is negative (TraceLast " + std::to_string(traceLast) + ").";
    return r;
  }
  const std::size_t count = static_cast<std::size_t>(traceLast) + 1;
  if ((data.size() - pos) / recSize < count) {
    r.error = "The recording is truncated: it announces " + std::to_string(count) + " samples but holds " +
              std::to_string((data.size() - pos) / recSize) + ".";
    return r;
  }
  r.rec.Samples.resize(count);
  r.rec.TraceTimes.resize(count);
  for (std::size_t i = 0; i < count; ++i) {
    r.rec.Samples[i] = GetSample(data.data() + pos);
    pos += kTraceSampleBytes;
    if (!r.rec.OldFormat) {
      r.rec.TraceTimes[i].assign(data.data() + pos, kTraceTimeChars);
      pos += kTraceTimeChars;
    }
  }
  r.ok = true;
  return r;
}

std::int32_t StepReplayIndex(std::int32_t index, bool up, std::int32_t traceLast) {
  index += up ? 1 : -1;
  if (index > traceLast - 1) index = traceLast - 1;
  if (index < 0) index = 0;
  return index;
}

ReplayLabels ReplayLabelsOf(const TraceSample& s, std::string_view timeText, bool decSec) {
  ReplayLabels l;
  l.lblRecCourse = "Course: " + Format(s.TrueHeading, "000") + kDegreeSign;
  l.lblRecPitch = "Pitch: " + std::to_string(s.Pitch);
  l.lblRecBank = "Bank: " + std::to_string(s.Bank);
  l.lblRecAlt = "Alt: " + std::to_string(s.Altitude);
  l.lblRecAGL = "AGL: " + std::to_string(s.Agl);
  l.lblRecTime = "UTC: " + std::string(timeText);
  l.lblRecSpeed = "TAS: " + std::to_string(s.Tas);
  l.lblRecLat = LatToText(s.Latitude, decSec);
  l.lblRecLon = LonToText(s.Longitude, decSec);
  return l;
}

std::string ReplayLine(const ReplayLabels& l) {
  std::string out;
  for (const std::string* t : {&l.lblRecTime, &l.lblRecLat, &l.lblRecLon, &l.lblRecAlt, &l.lblRecAGL,
                               &l.lblRecCourse, &l.lblRecSpeed, &l.lblRecPitch, &l.lblRecBank}) {
    if (!out.empty()) out += "  ";
    out += *t;
  }
  return out;
}

namespace {

std::string XmlEscape(std::string_view text) {
  std::string out;
  for (char c : Latin1ToUtf8(text)) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      default: out += c;
    }
  }
  return out;
}

// Days from 1970-01-01 of a civil date, and back.
long long DaysFromCivil(int y, int m, int d) {
  y -= m <= 2;
  const long long era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<long long>(doe) - 719468;
}
void CivilFromDays(long long z, int& y, int& m, int& d) {
  z += 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  y = static_cast<int>(yoe + era * 400 + (m <= 2));
}

}  // namespace

std::string RecordingToGpx(const Recording& rec, const DateTime& utcDate) {
  std::string out =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<gpx version=\"1.1\" creator=\"Orvanta\" xmlns=\"http://www.topografix.com/GPX/1/1\">\n"
      "  <trk>\n    <name>" +
      XmlEscape(rec.RecDescription) + "</name>\n    <trkseg>\n";
  long long day = DaysFromCivil(utcDate.year, utcDate.month, utcDate.day);
  int lastSeconds = -1;
  char buf[96];
  for (std::size_t i = 0; i < rec.Samples.size(); ++i) {
    const auto& s = rec.Samples[i];
    std::snprintf(buf, sizeof buf, "      <trkpt lat=\"%.6f\" lon=\"%.6f\">", s.Latitude, s.Longitude);
    out += buf;
    std::snprintf(buf, sizeof buf, "<ele>%.1f</ele>", s.Altitude * 0.3048);
    out += buf;
    std::string_view t = i < rec.TraceTimes.size() ? std::string_view(rec.TraceTimes[i]) : std::string_view();
    if (t.size() >= 8 && t[2] == ':' && t[5] == ':') {
      int h = static_cast<int>(Val(t.substr(0, 2))), mi = static_cast<int>(Val(t.substr(3, 2))),
          se = static_cast<int>(Val(t.substr(6, 2)));
      int seconds = h * 3600 + mi * 60 + se;
      if (lastSeconds >= 0 && seconds < lastSeconds) ++day;
      lastSeconds = seconds;
      int y, m, d;
      CivilFromDays(day, y, m, d);
      std::snprintf(buf, sizeof buf, "<time>%04d-%02d-%02dT%02d:%02d:%02dZ</time>", y, m, d, h, mi, se);
      out += buf;
    }
    out += "</trkpt>\n";
  }
  out += "    </trkseg>\n  </trk>\n</gpx>\n";
  return out;
}

}  // namespace orv

// orvanta-cli simlink [--sim SOURCE] status | set WHAT VALUE... | lag [N]:
// connects to a simulator source through the FSUIPC channel, as "Connect to
// FS" does, and either prints every value the program reads, runs one writer,
// or (FlightGear) measures how old the position the program holds is.
#include <algorithm>
#include <chrono>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include <nlohmann/json.hpp>

#include "cli/Cli.h"
#include "core/Runtime.h"
#include "simlink/FlightGearAdapter.h"
#include "simlink/Fsuipc.h"
#include "simlink/SimData.h"
#include "simlink/SimulatorChoice.h"

namespace orv::cli {

namespace {

constexpr const char* kSimlinkUsage =
    "usage: orvanta-cli simlink [--sim SOURCE] status\n"
    "       orvanta-cli simlink [--sim SOURCE] set com1|nav1|adf|heading-bug|ap-master|ap-heading-hold|position "
    "VALUE...\n"
    "       orvanta-cli simlink --sim flightgear[:UDP[:HTTP[:HOST]]] lag [N]";

int Refuse(std::ostream& err, const std::string& why) {
  err << "simlink: " << why << "\n" << kSimlinkUsage << "\n";
  return 2;
}

std::string Num(float v) { return NumText(v); }
std::string Flag(bool v) { return v ? "-1" : "0"; }

std::string Hex4(std::uint32_t v) {
  static const char* digits = "0123456789ABCDEF";
  std::string s = "0x0000";
  for (int i = 0; i < 4; ++i) s[5 - i] = digits[(v >> (4 * i)) & 0xF];
  return s;
}

// One raw word read back through the channel, to show what a writer left.
std::uint16_t ReadWord(FsuipcChannel& ch, std::uint32_t offset) {
  std::uint16_t word = 0;
  std::int32_t code = 0;
  if (ch.IpcQueueRead(offset, 2, &word, code)) ch.IpcProcess(code);
  return word;
}

void PrintStatus(FsuipcChannel& ch, std::ostream& out) {
  auto line = [&](const char* name, const std::string& value) { out << name << ' ' << value << '\n'; };
  const auto version = static_cast<std::uint32_t>(ch.FsuipcVersion);
  line("FsuipcVersion", Hex4(version >> 16) + Hex4(version & 0xFFFF).substr(2));
  line("SimVersion", std::to_string(ch.SimVersion));
  line("Liveness", std::to_string(ReadLiveness(ch)));
  line("Paused", Flag(ReadPaused(ch)));
  line("InMenu", Flag(ReadInMenu(ch)));

  SimSnapshot s;
  ReadSnapshot(ch, s);
  line("Latitude", Num(s.Latitude));
  line("Longitude", Num(s.Longitude));
  line("Altitude", std::to_string(s.Altitude));
  line("TrueHeading", Num(s.TrueHeading));
  line("MagHeading", Num(s.MagHeading));
  line("Pitch", std::to_string(s.Pitch));
  line("Bank", std::to_string(s.Bank));
  line("VerticalSpeed", std::to_string(s.VerticalSpeed));
  line("Agl", std::to_string(s.Agl));
  line("Tas", std::to_string(s.Tas));
  line("Ias", std::to_string(s.Ias));
  line("GroundSpeed", std::to_string(s.GroundSpeed));
  line("WindSpeed", std::to_string(s.WindSpeed));
  line("WindDir", std::to_string(s.WindDir));
  line("Wca", Num(s.Wca));
  line("SimMagVar", Num(s.SimMagVar));
  line("Com1", Num(s.Com1));
  line("ApAltitude", std::to_string(s.ApAltitude));
  line("TotalFuel", std::to_string(s.TotalFuel));
  line("Airborne", std::to_string(s.Airborne));
  line("LocalTimeText", s.LocalTimeText);
  line("UtcTimeText", s.UtcTimeText);
  line("UtcMinutes", Num(s.UtcMinutes));
  line("ApAltitudeLock", Flag(ReadApAltitudeLock(ch)));
  line("ApAltitudeTarget", std::to_string(ReadApAltitude(ch)));

  const AtcStrings atc = ReadAtcStrings(ch);
  line("FlightNumber", Latin1ToUtf8(Trim(atc.FlightNumber)));
  line("TailNumber", Latin1ToUtf8(Trim(atc.TailNumber)));
  line("Airline", Latin1ToUtf8(Trim(atc.Airline)));
  line("AircraftType", Latin1ToUtf8(Trim(atc.AircraftType)));

  const WeatherValues w = ReadWeather(ch);
  line("DewPoint", std::to_string(w.DewPoint));
  line("PrecipitationRate", std::to_string(w.PrecipitationRate));
  line("PrecipitationType", std::to_string(w.PrecipitationType));
  line("SurfaceWindSpeed", std::to_string(w.SurfaceWindSpeed));
  line("SurfaceWindDir", std::to_string(w.SurfaceWindDir));
  line("Visibility", Num(w.Visibility));
  line("AmbientTemperature", std::to_string(w.AmbientTemperature));
  for (int layer = 1; layer <= 3; ++layer) {
    const std::string n = std::to_string(layer);
    line(("Cloud" + n + "Altitude").c_str(), std::to_string(w.CloudAltitude[layer - 1]));
    line(("Cloud" + n + "Coverage").c_str(), std::to_string(w.CloudCoverage[layer - 1]));
  }
  line("SurfaceTemperature", std::to_string(w.SurfaceTemperature));
  line("Qnh", std::to_string(w.Qnh));
  line("Storm", Flag(w.Storm));

  TrafficTable table;
  const bool air = ReadAirTraffic(ch, table);
  line("AirTraffic", air ? std::to_string(table.Entries.size()) : "refused");
  const bool ground = ReadGroundTraffic(ch, table);
  line("GroundTraffic", ground ? std::to_string(table.Entries.size()) : "refused");
}

int RunSet(FsuipcChannel& ch, const Args& args, std::ostream& out, std::ostream& err) {
  if (args.empty()) return Refuse(err, "set: what to set is missing");
  const std::string& what = args[0];
  const std::size_t wanted = what == "position" ? 3 : 2;
  if (args.size() != wanted) return Refuse(err, "set " + what + ": expected " + std::to_string(wanted - 1) + " value(s)");
  std::optional<double> a = ParseNumber(args[1]);
  if (!a) return Refuse(err, "not a number: '" + args[1] + "'");

  bool ok = false;
  if (what == "com1") {
    ok = WriteCom1(ch, CSng(*a));
    out << "Com1 " << Num(ReadCom1(ch)) << '\n';
  } else if (what == "nav1") {
    ok = WriteNav1(ch, CSng(*a));
    out << "Nav1 " << Hex4(ReadWord(ch, fsoff::Nav1)) << '\n';
  } else if (what == "adf") {
    ok = WriteAdf(ch, CSng(*a));
    out << "AdfMain " << Hex4(ReadWord(ch, fsoff::AdfMain)) << '\n';
    out << "AdfExtended " << Hex4(ReadWord(ch, fsoff::AdfExtended)) << '\n';
  } else if (what == "heading-bug") {
    ok = WriteApHeadingBug(ch, CInt(*a));
    out << "ApHeading " << static_cast<std::int16_t>(ReadWord(ch, fsoff::ApHeading)) << '\n';
  } else if (what == "ap-master" || what == "ap-heading-hold") {
    const auto value = static_cast<std::uint32_t>(CLng(*a));
    ok = what == "ap-master" ? WriteApMaster(ch, value) : WriteApHeadingHold(ch, value);
    out << (what == "ap-master" ? "ApMaster " : "ApHeadingHold ")
        << ReadWord(ch, what == "ap-master" ? fsoff::ApMaster : fsoff::ApHeadingHold) << '\n';
  } else if (what == "position") {
    std::optional<double> b = ParseNumber(args[2]);
    if (!b) return Refuse(err, "not a number: '" + args[2] + "'");
    if (*a < -90 || *a > 90) return Refuse(err, "latitude beyond 90 degrees");
    if (*b < -180 || *b > 180) return Refuse(err, "longitude beyond 180 degrees");
    ok = WriteAircraftPosition(ch, CSng(*a), CSng(*b));
    const PositionBlock p = ReadPositionBlock(ch);
    out << "Latitude " << Num(p.Latitude) << "\nLongitude " << Num(p.Longitude) << '\n';
  } else {
    return Refuse(err, "set: unknown value '" + what + "'");
  }
  if (!ok) {
    err << "simlink: the write did not reach the simulator\n";
    return 1;
  }
  return 0;
}

// How far the values the program holds trail FlightGear's own clock. N times,
// a fifth of a second apart: FlightGear's frame clock is asked over HTTP, the
// snapshot is read through the channel as a tick reads it, and the lag is
// FlightGear's clock at the answer less the clock of the newest line taken,
// plus half the HTTP round trip (the answer's clock is read somewhere in it).
int RunLag(FsuipcChannel& ch, FlightGearAdapter& fg, const std::string& host, std::uint16_t httpPort, int samples,
           std::ostream& out, std::ostream& err) {
  using SteadyClock = std::chrono::steady_clock;
  std::vector<double> lags;
  for (int i = 0; i < samples; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    const auto t0 = SteadyClock::now();
    std::string answer;
    // A FlightGear that stalls between frames answers late; such a sample is
    // left out rather than taken as the link's lag.
    if (HttpExchange(host, httpPort, "GET", "/json/sim/time/steady-clock-sec", "", 5000, answer) != 200) continue;
    const double roundTrip = std::chrono::duration<double>(SteadyClock::now() - t0).count();
    SimSnapshot snapshot;
    ReadSnapshot(ch, snapshot);
    const nlohmann::json node = nlohmann::json::parse(answer, nullptr, false);
    const std::optional<double> now = node.is_object() && node.contains("value") && node["value"].is_number()
                                          ? std::optional<double>(node["value"].get<double>())
                                          : std::nullopt;
    if (!now) {
      err << "simlink: no elapsed time in FlightGear's answer\n";
      return 1;
    }
    lags.push_back((*now - fg.LastElapsed() + roundTrip / 2) * 1000.0);
  }
  if (lags.empty()) {
    err << "simlink: FlightGear's property server did not answer on port " << httpPort << '\n';
    return 1;
  }
  std::sort(lags.begin(), lags.end());
  auto ms = [](double v) { return std::to_string(static_cast<long>(v + 0.5)); };
  out << "Lag min " << ms(lags.front()) << " ms median " << ms(lags[lags.size() / 2]) << " ms max "
      << ms(lags.back()) << " ms over " << lags.size() << " samples\n";
  return 0;
}

}  // namespace

int RunSimlink(const Args& args, IpcPlatform& platform, std::ostream& out, std::ostream& err) {
  if (args.empty() || (args[0] != "status" && args[0] != "set" && args[0] != "lag"))
    return Refuse(err, "expected status, set or lag");
  if (args[0] == "status" && args.size() != 1) return Refuse(err, "status takes no values");

  FsuipcChannel ch(platform);
  ch.IpcClearHandles();
  std::int32_t code = 0;
  if (!ch.IpcOpen(0, code)) {
    err << "Unable to connect to Flight Simulator" << ch.LastIpcMessage() << '\n';
    return 1;
  }
  int rc = 0;
  if (args[0] == "status")
    PrintStatus(ch, out);
  else if (args[0] == "lag")
    rc = Refuse(err, "lag needs the flightgear source");
  else
    rc = RunSet(ch, Args(args.begin() + 1, args.end()), out, err);
  ch.IpcClose();
  return rc;
}

int CmdSimlink(const Context&, const Args& args, std::ostream& out, std::ostream& err) {
  std::string source = "builtin";
  Args rest;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--sim") {
      if (i + 1 >= args.size()) return Refuse(err, "--sim needs a source");
      source = args[++i];
    } else if (args[i].rfind("--sim=", 0) == 0) {
      source = args[i].substr(6);
    } else {
      rest.push_back(args[i]);
    }
  }
  std::string error;
  std::unique_ptr<IpcPlatform> platform = OpenSimulator(source, error);
  if (!platform) {
    err << "simlink: " << error << '\n';
    return 2;
  }
  auto* fg = dynamic_cast<FlightGearAdapter*>(platform.get());
  if (fg && !rest.empty() && rest[0] == "lag") {
    int samples = 20;
    if (rest.size() > 2) return Refuse(err, "lag takes at most a count");
    if (rest.size() == 2) {
      std::optional<double> n = ParseNumber(rest[1]);
      if (!n || *n < 1 || *n > 1000) return Refuse(err, "lag: the count is 1 to 1000");
      samples = static_cast<int>(*n);
    }
    FsuipcChannel ch(*platform);
    ch.IpcClearHandles();
    std::int32_t code = 0;
    if (!ch.IpcOpen(0, code)) {
      err << "Unable to connect to Flight Simulator" << ch.LastIpcMessage() << '\n';
      return 1;
    }
    const int rc = RunLag(ch, *fg, fg->Host(), fg->HttpPort(), samples, out, err);
    ch.IpcClose();
    return rc;
  }
  return RunSimlink(rest, *platform, out, err);
}

}  // namespace orv::cli

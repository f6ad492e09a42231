// The world fixture's region/country/state/city hierarchy, its airports with
// their runways, frequencies, parking positions, ILS and markers, and the
// hand-made Frankfurt with its ground layout.
#include <algorithm>
#include <cmath>
#include <map>

#include "core/Runtime.h"
#include "support/WorldFixtureDetail.h"

namespace orv::test::world {

namespace {

constexpr double kFeetPerNm = 6076.12;

struct ListWeights {
  double Small, Medium, Large;
  double Of(Size s) const { return s == Size::Large ? Large : s == Size::Medium ? Medium : Small; }
};
constexpr ListWeights kRunwayWeights{1, 2, 4};
constexpr ListWeights kFrequencyWeights{2, 4, 10};
constexpr ListWeights kParkingWeights{2, 8, 40};
constexpr ListWeights kIlsWeights{0, 1, 4};

template <typename T>
void Shuffle(std::vector<T>& v, Rng& rng) {
  for (std::size_t i = v.size(); i > 1; --i) std::swap(v[i - 1], v[rng.Below(i)]);
}

// The designator of a runway number (1..36) with its side letter.
std::string Designator(int number, char side) {
  std::string d = Format(number, "00");
  if (side != ' ') d += side;
  return d;
}

char OppositeSide(char side) { return side == 'L' ? 'R' : side == 'R' ? 'L' : side; }

double Wrap360(double deg) {
  while (deg >= 360) deg -= 360;
  while (deg < 0) deg += 360;
  return deg;
}

// The threshold of a runway end: half the length back from the middle.
ShapePoint Threshold(const RunwayRec& rw, bool lowEnd) {
  const double half = rw.LengthFeet / 2.0 / kFeetPerNm;
  return Offset(rw.Lat, rw.Lon, lowEnd ? rw.TrueHeading + 180.0 : rw.TrueHeading, half);
}

// An ILS on one end of a runway, with its two markers on the approach.
IlsRec MakeIls(int index, std::string_view airportCode, const RunwayRec& rw, bool lowEnd, float frequency,
               float elevation, std::vector<MarkerRec>& markers) {
  IlsRec ils;
  std::string ident = "I" + std::string(airportCode.substr(1, 2)) + static_cast<char>('A' + index % 26);
  ils.Ident.Assign(ident);
  const std::string end(lowEnd ? rw.LowEnd.Trimmed() : rw.HighEnd.Trimmed());
  ils.Name.Assign("ILS RWY " + end);
  ils.Runway.Assign(end);
  const double course = lowEnd ? rw.TrueHeading : Wrap360(rw.TrueHeading + 180.0);
  const ShapePoint threshold = Threshold(rw, lowEnd);
  ils.Values[0] = threshold.Lat;
  ils.Values[1] = threshold.Lon;
  ils.Values[2] = static_cast<float>(course);
  ils.Values[3] = frequency;
  ils.Values[4] = 3.0f;   // glide slope
  ils.Values[5] = 18.0f;  // range NM
  ils.Values[6] = elevation;
  ils.Ident2.Assign(ident);
  for (auto [kind, distance] : {std::pair<const char*, double>{"OM", 4.5}, {"MM", 0.6}}) {
    MarkerRec m;
    m.Kind.Assign(kind);
    const ShapePoint p = Offset(threshold.Lat, threshold.Lon, course + 180.0, distance);
    m.Lat = p.Lat;
    m.Lon = p.Lon;
    m.Heading = static_cast<float>(course);
    markers.push_back(m);
  }
  return ils;
}

const char* FrequencyWord(uint8_t kind) {
  static constexpr const char* kWords[] = {"",       "ATIS",     "MULTICOM", "UNICOM",    "CTAF",   "GROUND", "TOWER",
                                           "DELIVERY", "APPROACH", "DEPARTURE", "CENTER", "RADIO", "ASOS"};
  return kWords[kind];
}

// ------------------------------------------------------------------ hierarchy

struct Hierarchy {
  std::vector<std::vector<std::string>> CitiesOf;  // by country (area order), city names
  std::vector<std::vector<std::string>> StatesOf;  // by country, the state of each city in CitiesOf
  std::vector<int> CountryArea;
  std::vector<const CountrySpec*> Specs;
};

Hierarchy BuildHierarchy(World& w, Rng& rng) {
  Hierarchy h;
  const WorldCountsRec& t = w.Counts.Totals;
  std::vector<double> countryWeights;
  for (int a = 0; a < kAreaCount; ++a) {
    const AreaSpec& area = Area(a);
    if (std::find(w.Regions.begin(), w.Regions.end(), area.Region) == w.Regions.end())
      w.Regions.emplace_back(area.Region);
    for (int c = 0; c < area.CountryCount; ++c) {
      h.Specs.push_back(&area.Countries[c]);
      h.CountryArea.push_back(a);
      countryWeights.push_back(area.AirportShare / area.CountryCount);
      w.Countries.push_back({area.Countries[c].Name, area.Region});
    }
  }
  const std::size_t countries = h.Specs.size();
  h.CitiesOf.resize(countries);
  h.StatesOf.resize(countries);

  std::unordered_set<std::string> usedNames = {"Hessen", "Frankfurt"};
  auto uniqueName = [&] {
    for (;;) {
      std::string name = PlaceName(rng);
      if (usedNames.insert(name).second) return name;
      name += " " + PlaceName(rng);  // the syllables ran short
      if (usedNames.insert(name).second) return name;
    }
  };
  const std::vector<int64_t> statesPer = Distribute(t.States, countryWeights, 1);
  std::vector<std::pair<std::size_t, std::string>> states;  // country, name
  std::vector<double> stateWeights;
  for (std::size_t c = 0; c < countries; ++c)
    for (int64_t k = 0; k < statesPer[c]; ++k) {
      const bool hessen = std::string_view(h.Specs[c]->Name) == "Germany" && k == 0;
      states.emplace_back(c, hessen ? std::string("Hessen") : uniqueName());
      stateWeights.push_back(countryWeights[c] / static_cast<double>(statesPer[c]));
    }
  const std::vector<int64_t> citiesPer = Distribute(t.Cities, stateWeights, 1);
  for (std::size_t s = 0; s < states.size(); ++s) {
    const auto& [c, stateName] = states[s];
    w.States.push_back({stateName, h.Specs[c]->Name});
    for (int64_t k = 0; k < citiesPer[s]; ++k) {
      std::string city = stateName == "Hessen" && k == 0 ? std::string("Frankfurt") : uniqueName();
      w.Cities.push_back({city, stateName, h.Specs[c]->Name});
      h.CitiesOf[c].push_back(city);
      h.StatesOf[c].push_back(stateName);
    }
  }
  // The database tool writes every name file in alphabetical order.
  std::sort(w.Regions.begin(), w.Regions.end());
  std::sort(w.Countries.begin(), w.Countries.end(),
            [](const CountryEntry& a, const CountryEntry& b) { return a.Name < b.Name; });
  std::sort(w.States.begin(), w.States.end(),
            [](const StateEntry& a, const StateEntry& b) { return a.Name < b.Name; });
  std::sort(w.Cities.begin(), w.Cities.end(), [](const CityEntry& a, const CityEntry& b) { return a.Name < b.Name; });
  return h;
}

// ------------------------------------------------------------------ lists

void AddRunways(AirportRec& a, Size size, int count, Rng& rng) {
  const double h0 = std::round(rng.Range(5.0, 175.0) * 10.0) / 10.0;
  const int parallels = size == Size::Large ? std::min(count, 3) : size == Size::Medium ? std::min(count, 2) : 1;
  static constexpr char kSides[4][3] = {{' '}, {' '}, {'L', 'R'}, {'L', 'C', 'R'}};
  for (int r = 0; r < count; ++r) {
    RunwayRec rw;
    double heading = h0;
    char side = ' ';
    double across = 0;
    if (r < parallels) {
      if (parallels > 1) side = kSides[parallels][r];
      across = (r - (parallels - 1) / 2.0) * 0.7;  // NM between parallels
    } else {
      heading = h0 + 40.0 + 50.0 * (r - parallels);
      while (heading >= 175.0) heading -= 170.0;
    }
    const int number = std::clamp(static_cast<int>(std::lround(heading / 10.0)), 1, 18);
    rw.LowEnd.Assign(Designator(number, side));
    rw.HighEnd.Assign(Designator(number + 18, OppositeSide(side)));
    ShapePoint middle = Offset(a.Lat, a.Lon, heading - 90.0, across);
    if (r >= parallels) middle = Offset(middle.Lat, middle.Lon, rng.Range(0, 360), rng.Range(0.2, 0.8));
    rw.Lat = middle.Lat;
    rw.Lon = middle.Lon;
    rw.TrueHeading = static_cast<float>(heading + rng.Range(-0.05, 0.05));
    switch (size) {
      case Size::Small:
        rw.LengthFeet = static_cast<int16_t>(rng.Range(1500, 5500));
        rw.WidthFeet = static_cast<int16_t>(rng.Range(50, 100));
        break;
      case Size::Medium:
        rw.LengthFeet = static_cast<int16_t>(rng.Range(4500, 9000));
        rw.WidthFeet = static_cast<int16_t>(rng.Range(100, 150));
        break;
      case Size::Large:
        rw.LengthFeet = static_cast<int16_t>(rng.Range(8000, 13500));
        rw.WidthFeet = static_cast<int16_t>(rng.Range(148, 200));
        break;
    }
    if (size == Size::Small) {
      static constexpr uint8_t kSurfaces[] = {4, 4, 4, 4, 4, 4, 4, 4, 1, 1, 1, 1, 1, 0, 0, 12, 12, 14, 14, 23, 2, 254};
      rw.Surface = kSurfaces[rng.Below(std::size(kSurfaces))];
    } else {
      rw.Surface = rng.Chance(0.7) ? 4 : 0;
    }
    a.Runways.push_back(rw);
  }
}

void AddFrequencies(AirportRec& a, Size size, int count, Rng& rng) {
  static constexpr uint8_t kSmall[] = {4, 3, 2, 1, 11, 12};
  static constexpr uint8_t kMedium[] = {6, 5, 1, 8, 7, 9, 3};
  static constexpr uint8_t kLarge[] = {1, 7, 5, 5, 6, 6, 8, 8, 9, 9, 10, 12};
  const std::string city = UpperText(a.City);
  for (int i = 0; i < count; ++i) {
    FrequencyRec f;
    uint8_t kind = size == Size::Large    ? kLarge[i % std::size(kLarge)]
                   : size == Size::Medium ? kMedium[i % std::size(kMedium)]
                                          : kSmall[i % std::size(kSmall)];
    f.Ident.Assign(a.Icao.Trimmed());
    f.Name.Assign(city + " " + FrequencyWord(kind));
    f.Kind = kind;
    f.Frequency = static_cast<float>(118.0 + 0.025 * rng.Below(760));
    a.Frequencies.push_back(f);
  }
}

void AddParking(AirportRec& a, Size size, int count, Rng& rng) {
  // Rows beside the first runway, 0.4 NM off its centre line.
  const double heading = a.Runways.empty() ? 0.0 : a.Runways.front().TrueHeading;
  const ShapePoint rowStart = Offset(a.Lat, a.Lon, heading + 90.0, 0.4);
  for (int i = 0; i < count; ++i) {
    ParkingRec p;
    const int row = i / 20;
    const int place = i % 20;
    ShapePoint pos = Offset(rowStart.Lat, rowStart.Lon, heading, (place - 10) * 0.035);
    pos = Offset(pos.Lat, pos.Lon, heading + 90.0, row * 0.08);
    p.Lat = pos.Lat;
    p.Lon = pos.Lon;
    p.Value = static_cast<int32_t>(Wrap360(heading + 90.0));  // heading of the stand
    if (size == Size::Large && i < count * 4 / 5) {
      p.Kind = 8 + static_cast<int32_t>(rng.Below(3));  // gates small, medium, heavy
      p.NameCode = std::min(12 + row, 37);                // "Gate A", "Gate B", ...
      p.Number = place + 1;
    } else if (size == Size::Large) {
      p.Kind = 5;  // cargo ramp
      p.NameCode = 1;
      p.Number = i + 1;
    } else if (size == Size::Medium && i % 2 == 0) {
      p.Kind = 9;
      p.NameCode = 10;  // "Gate"
      p.Number = i + 1;
    } else {
      p.Kind = 1 + static_cast<int32_t>(rng.Below(4));  // Ramp GA ...
      p.NameCode = 1 + static_cast<int32_t>(rng.Below(9));  // "Parking", "N Parking", ...
      p.Number = i + 1;
    }
    a.Parking.push_back(p);
  }
}

// ------------------------------------------------------------------ Frankfurt

struct EddfRunway {
  const char* Low;
  const char* High;
  float Lat, Lon, Heading;
  const char* LowIls;   // "" for none
  const char* HighIls;
  float LowFrequency, HighFrequency;
};

constexpr EddfRunway kEddfRunwayList[kEddfRunways] = {
    {"07L", "25R", 50.0455f, 8.5290f, 69.9f, "IFEL", "IFWR", 109.50f, 111.35f},
    {"07C", "25C", 50.0326f, 8.5869f, 69.9f, "IFEC", "IFWC", 111.55f, 111.15f},
    {"07R", "25L", 50.0279f, 8.5863f, 69.9f, "IFER", "IFWL", 110.55f, 110.70f},
    {"18", "36", 50.0340f, 8.5265f, 179.9f, "", "", 0, 0},
};
constexpr const char* kEddfTaxiNames[3] = {"N", "L", "S"};

AirportRec Frankfurt(std::vector<MarkerRec>& markers) {
  AirportRec a;
  a.Icao.Assign("EDDF");
  a.Name.Assign("Frankfurt Main");
  a.City = "Frankfurt";
  a.State = "Hessen";
  a.Country = "Germany";
  a.Lat = 50.0333f;
  a.Lon = 8.5706f;
  a.Elevation = 364;
  for (const EddfRunway& r : kEddfRunwayList) {
    RunwayRec rw;
    rw.LowEnd.Assign(r.Low);
    rw.HighEnd.Assign(r.High);
    rw.Lat = r.Lat;
    rw.Lon = r.Lon;
    rw.TrueHeading = r.Heading;
    rw.LengthFeet = std::string_view(r.Low) == "07L" ? 9186 : 13123;
    rw.WidthFeet = std::string_view(r.Low) == "07L" ? 148 : 197;
    rw.Surface = std::string_view(r.Low) == "18" ? 0 : 4;
    rw.LowIls.Assign(r.LowIls);
    rw.HighIls.Assign(r.HighIls);
    a.Runways.push_back(rw);
  }
  for (std::size_t i = 0; i < std::size(kEddfRunwayList); ++i) {
    const EddfRunway& r = kEddfRunwayList[i];
    if (*r.LowIls == '\0') continue;
    for (bool low : {true, false}) {
      IlsRec ils = MakeIls(0, "EDDF", a.Runways[i], low, low ? r.LowFrequency : r.HighFrequency, 364.0f, markers);
      ils.Ident.Assign(low ? r.LowIls : r.HighIls);
      ils.Ident2 = ils.Ident;
      a.Ils.push_back(ils);
    }
  }
  struct Freq {
    const char* Name;
    float Mhz;
    uint8_t Kind;
  };
  constexpr Freq kFrequencies[kEddfFrequencies] = {
      {"FRANKFURT ATIS", 118.025f, 1},     {"FRANKFURT DELIVERY", 121.9f, 7},  {"FRANKFURT APRON", 121.95f, 5},
      {"FRANKFURT GROUND", 121.8f, 5},     {"FRANKFURT TOWER", 119.9f, 6},     {"FRANKFURT TOWER", 124.85f, 6},
      {"LANGEN RADAR", 120.8f, 8},         {"LANGEN RADAR", 120.15f, 9}};
  for (const Freq& f : kFrequencies) {
    FrequencyRec rec;
    rec.Ident.Assign("EDDF");
    rec.Name.Assign(f.Name);
    rec.Frequency = f.Mhz;
    rec.Kind = f.Kind;
    a.Frequencies.push_back(rec);
  }
  // Gates A1-A20, B1-B20 and C1-C10 north of the centre runway, then cargo and
  // general aviation stands.
  const ShapePoint apron{50.0490f, 8.5560f};
  for (int i = 0; i < kEddfParking; ++i) {
    ParkingRec p;
    const int row = i / 20;
    const int place = i % 20;
    const ShapePoint along = Offset(apron.Lat, apron.Lon, 69.9, place * 0.04);
    const ShapePoint pos = Offset(along.Lat, along.Lon, 339.9, row * 0.12);
    p.Lat = pos.Lat;
    p.Lon = pos.Lon;
    p.Value = 340;
    if (i < 50) {
      p.Kind = row == 0 ? 10 : 9;
      p.NameCode = 12 + row;
      p.Number = place + 1;
    } else if (i < 55) {
      p.Kind = 5;
      p.NameCode = 1;
      p.Number = i - 49;
    } else {
      p.Kind = 1;
      p.NameCode = 3;  // "NE Parking"
      p.Number = i - 54;
    }
    a.Parking.push_back(p);
  }
  return a;
}

}  // namespace

std::vector<TaxiRec> EddfTaxiways() {
  std::vector<TaxiRec> out;
  auto segment = [&](ShapePoint a, ShapePoint b, const std::string& name) {
    TaxiRec t;
    t.Lat1 = a.Lat;
    t.Lon1 = a.Lon;
    t.Lat2 = b.Lat;
    t.Lon2 = b.Lon;
    t.Name.Assign(name);
    t.Width = 75;
    out.push_back(t);
  };
  // A parallel taxiway beside each of the three 07/25 runways in eight pieces,
  // with nine connectors to the runway; along runway 18 one in eight pieces
  // with five connectors; then the apron ring.
  for (int r = 0; r < 4; ++r) {
    const EddfRunway& rw = kEddfRunwayList[r];
    const double length = (r == 0 ? 9186.0 : 13123.0) / kFeetPerNm;
    const std::string name = r < 3 ? kEddfTaxiNames[r] : "W";
    const double side = r == 2 ? -90.0 : 90.0;  // the south runway's taxiway lies south of it
    const ShapePoint start = Offset(rw.Lat, rw.Lon, rw.Heading + 180.0, length / 2);
    const ShapePoint taxiStart = Offset(start.Lat, start.Lon, rw.Heading - side, 0.12);
    for (int k = 0; k < 8; ++k) {
      const ShapePoint a = Offset(taxiStart.Lat, taxiStart.Lon, rw.Heading, length * k / 8);
      const ShapePoint b = Offset(taxiStart.Lat, taxiStart.Lon, rw.Heading, length * (k + 1) / 8);
      segment(a, b, name);
    }
    const int connectors = r < 3 ? 9 : 5;
    for (int k = 0; k < connectors; ++k) {
      const double along = length * k / (connectors - 1);
      segment(Offset(start.Lat, start.Lon, rw.Heading, along), Offset(taxiStart.Lat, taxiStart.Lon, rw.Heading, along),
              name + std::to_string(k + 1));
    }
  }
  const ShapePoint ring[7] = {{50.0470f, 8.5480f}, {50.0530f, 8.5600f}, {50.0540f, 8.5800f}, {50.0500f, 8.5900f},
                              {50.0440f, 8.5850f}, {50.0430f, 8.5650f}, {50.0470f, 8.5480f}};
  for (int k = 0; k < 6; ++k) segment(ring[k], ring[k + 1], "A");
  return out;
}

std::vector<GroundPolyRec> EddfGroundPolygons() {
  std::vector<GroundPolyRec> out;
  auto point = [&](char kind, ShapePoint p) {
    GroundPolyRec g;
    g.Kind.Assign(std::string(1, kind));
    g.Lat = p.Lat;
    g.Lon = p.Lon;
    out.push_back(g);
  };
  ShapePoint lastStart;
  auto polygon = [&](const std::vector<ShapePoint>& corners) {
    for (std::size_t i = 0; i < corners.size(); ++i) point(i == 0 ? 'A' : 'L', corners[i]);
    lastStart = corners.front();
  };
  // The four runway surfaces as rectangles.
  for (int r = 0; r < 4; ++r) {
    const EddfRunway& rw = kEddfRunwayList[r];
    const double half = (r == 0 ? 9186.0 : 13123.0) / kFeetPerNm / 2;
    const double halfWidth = 197.0 / kFeetPerNm / 2;
    const ShapePoint a = Offset(rw.Lat, rw.Lon, rw.Heading + 180.0, half);
    const ShapePoint b = Offset(rw.Lat, rw.Lon, rw.Heading, half);
    polygon({Offset(a.Lat, a.Lon, rw.Heading - 90.0, halfWidth), Offset(b.Lat, b.Lon, rw.Heading - 90.0, halfWidth),
             Offset(b.Lat, b.Lon, rw.Heading + 90.0, halfWidth), Offset(a.Lat, a.Lon, rw.Heading + 90.0, halfWidth)});
  }
  // Aprons and the terminal.
  polygon({{50.0520f, 8.5500f}, {50.0545f, 8.5700f}, {50.0500f, 8.5720f}, {50.0478f, 8.5520f}});
  polygon({{50.0505f, 8.5740f}, {50.0530f, 8.5880f}, {50.0480f, 8.5890f}, {50.0462f, 8.5760f}});
  polygon({{50.0400f, 8.5900f}, {50.0420f, 8.6000f}, {50.0385f, 8.6010f}, {50.0370f, 8.5915f}});
  polygon({{50.0505f, 8.5600f}, {50.0512f, 8.5650f}, {50.0500f, 8.5690f}, {50.0490f, 8.5660f}, {50.0488f, 8.5620f},
           {50.0495f, 8.5595f}});
  point('E', lastStart);  // closes the last polygon
  return out;
}

void BuildHierarchyAndAirports(World& w) {
  Rng rng(w.Options.Seed, kStreamHierarchy);
  Hierarchy h = BuildHierarchy(w, rng);

  Rng arng(w.Options.Seed, kStreamAirports);
  const Plan& plan = w.Counts;
  const WorldCountsRec& t = plan.Totals;

  // Sizes: exactly the planned number of large and medium airports, shuffled
  // among the others (EDDF is one of the large ones).
  std::vector<Size> sizes;
  std::vector<int> areas;
  for (int a = 0; a < kAreaCount; ++a) areas.insert(areas.end(), static_cast<std::size_t>(plan.AirportsInArea[a]), a);
  sizes.assign(areas.size(), Size::Small);
  for (int64_t i = 0; i < plan.LargeAirports - 1 + plan.MediumAirports && i < static_cast<int64_t>(sizes.size()); ++i)
    sizes[static_cast<std::size_t>(i)] = i < plan.LargeAirports - 1 ? Size::Large : Size::Medium;
  Shuffle(sizes, arng);

  // List lengths: exact totals, shared out by size.
  auto lengths = [&](const ListWeights& weights, int64_t total, int64_t minimum) {
    std::vector<double> wv;
    wv.reserve(sizes.size());
    for (Size s : sizes) wv.push_back(weights.Of(s));
    return Distribute(total, wv, minimum);
  };
  const std::vector<int64_t> runways = lengths(kRunwayWeights, t.Runways - kEddfRunways, 1);
  const std::vector<int64_t> frequencies = lengths(kFrequencyWeights, t.Frequencies - kEddfFrequencies, 1);
  const std::vector<int64_t> parking = lengths(kParkingWeights, t.Parking - kEddfParking, 1);
  const std::vector<int64_t> ils = lengths(kIlsWeights, t.Ils - kEddfIls, 0);

  std::vector<AirportRec> airports;
  std::vector<MarkerRec> markers;
  airports.reserve(sizes.size() + 1);
  std::array<int64_t, 26> nextCode{};
  int64_t ilsCarry = 0;
  std::vector<Size> sizeOf;
  std::vector<int> areaOf;
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    const AreaSpec& area = Area(areas[i]);
    // The country among the area's, a city of it.
    std::size_t country = 0;
    while (h.CountryArea[country] != areas[i]) ++country;
    country += arng.Below(static_cast<uint64_t>(area.CountryCount));
    const std::size_t city = arng.Below(h.CitiesOf[country].size());

    AirportRec a;
    const char letter = h.Specs[country]->Prefix[0];
    std::string code;
    do code = letter + CodeFromNumber(nextCode[static_cast<std::size_t>(letter - 'A')]++);
    while (code == "EDDF");
    a.Icao.Assign(code);
    a.City = h.CitiesOf[country][city];
    a.State = h.StatesOf[country][city];
    a.Country = h.Specs[country]->Name;
    static constexpr const char* kLargeNames[] = {" Intl", " International"};
    static constexpr const char* kMediumNames[] = {" Regional", " Municipal", " Airport"};
    static constexpr const char* kSmallNames[] = {" Airfield", " Airpark", " Field", " Airstrip", " County"};
    a.Name.Assign(a.City + (sizes[i] == Size::Large    ? kLargeNames[arng.Below(2)]
                            : sizes[i] == Size::Medium ? kMediumNames[arng.Below(3)]
                                                       : kSmallNames[arng.Below(5)]));
    a.Lat = static_cast<float>(arng.Range(area.South, area.North));
    a.Lon = static_cast<float>(arng.Range(area.West, area.East));
    a.Elevation = static_cast<int32_t>(std::pow(arng.Unit(), 3.0) * 7000.0);
    a.MagVar = VariationAt(w, a.Lat, a.Lon);
    AddRunways(a, sizes[i], static_cast<int>(runways[i]), arng);
    AddFrequencies(a, sizes[i], static_cast<int>(frequencies[i]), arng);
    AddParking(a, sizes[i], static_cast<int>(parking[i]), arng);
    // ILS on runway ends in turn, never more than the ends there are.
    const int64_t wanted = ils[i] + ilsCarry;
    const int64_t placed = std::min<int64_t>(wanted, 2 * a.RunwayCount());
    ilsCarry = wanted - placed;
    for (int64_t k = 0; k < placed; ++k) {
      RunwayRec& rw = a.Runways[static_cast<std::size_t>(k / 2)];
      const bool low = k % 2 == 1;  // the high end (the prevailing westerlies' 25 of a 07/25) first
      const float mhz = static_cast<float>(108.1 + 0.2 * arng.Below(20));
      IlsRec rec = MakeIls(static_cast<int>(k), code, rw, low, mhz, static_cast<float>(a.Elevation), markers);
      (low ? rw.LowIls : rw.HighIls) = rec.Ident;
      a.Ils.push_back(rec);
    }
    airports.push_back(std::move(a));
    sizeOf.push_back(sizes[i]);
    areaOf.push_back(areas[i]);
  }
  airports.push_back(Frankfurt(markers));
  sizeOf.push_back(Size::Large);
  areaOf.push_back(kEuropeArea);

  // The database tool writes the airports in ICAO order; the slot is the
  // position, and an ILS names its airport's slot.
  std::vector<std::size_t> order(airports.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::sort(order.begin(), order.end(),
            [&](std::size_t x, std::size_t y) { return airports[x].Icao.View() < airports[y].Icao.View(); });
  w.Airports.reserve(airports.size());
  for (std::size_t slot = 0; slot < order.size(); ++slot) {
    AirportRec& a = airports[order[slot]];
    for (IlsRec& rec : a.Ils) rec.Airport = static_cast<int32_t>(slot);
    if (a.Icao.Trimmed() == "EDDF") w.EddfSlot = static_cast<int32_t>(slot);
    w.Airports.push_back(std::move(a));
    w.AirportSizes.push_back(sizeOf[order[slot]]);
    w.AirportAreas.push_back(areaOf[order[slot]]);
  }
  w.Shapes.Markers = std::move(markers);
  w.Shapes.TaxiSegments = EddfTaxiways();
  w.Shapes.GroundPolygons = EddfGroundPolygons();
}

}  // namespace orv::test::world

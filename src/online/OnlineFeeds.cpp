// The JSON feeds the networks publish today, into the same records as the
// text files. Every value is read with its type checked: a member of the
// wrong type or a missing one reads as empty or zero, never as a fault.
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

#include "core/Runtime.h"
#include "online/OnlineData.h"
#include "online/OnlineDetail.h"

namespace orv {

namespace {

using Json = nlohmann::json;

const Json* Member(const Json& obj, const char* key) {
  if (!obj.is_object()) return nullptr;
  auto it = obj.find(key);
  return it == obj.end() ? nullptr : &*it;
}

std::string_view Str(const Json& obj, const char* key) {
  const Json* v = Member(obj, key);
  if (!v || !v->is_string()) return {};
  return v->get_ref<const std::string&>();
}

// A number, or a number written as text ("119.900").
bool Num(const Json& obj, const char* key, double& out) {
  const Json* v = Member(obj, key);
  if (!v) return false;
  if (v->is_number()) {
    out = v->get<double>();
    return std::isfinite(out);
  }
  if (v->is_string()) {
    out = Val(v->get_ref<const std::string&>());
    return true;
  }
  return false;
}

double NumOr0(const Json& obj, const char* key) {
  double d = 0;
  return Num(obj, key, d) ? d : 0.0;
}

bool ParseDoc(std::string_view text, Json& doc, std::string& error) {
  doc = Json::parse(text.begin(), text.end(), nullptr, false);
  if (doc.is_discarded() || !doc.is_object()) {
    error = "not a JSON document";
    return false;
  }
  return true;
}

bool ValidLatLon(double lat, double lon) { return lat >= -90 && lat <= 90 && lon >= -180 && lon <= 180; }

// "2026-11-24T03:36:12.345Z" as the text files' stamp "24.11.2026-03:36 h".
std::string IsoStamp(std::string_view iso) {
  if (iso.size() < 16) return std::string(iso);
  return std::string(iso.substr(8, 2)) + "." + std::string(iso.substr(5, 2)) + "." + std::string(iso.substr(0, 4)) +
         "-" + std::string(iso.substr(11, 2)) + ":" + std::string(iso.substr(14, 2)) + " h";
}

void Finish(OnlineData& out) {
  out.OnlineHeader = out.Stamp + " / ATC:" + std::to_string(out.AtcLines) + " - Pilots:" + std::to_string(out.PilotLines);
}

// VATSIM facility codes: 1 FSS, 2 DEL, 3 GND, 4 TWR, 5 APP, 6 CTR.
int VatsimFacility(int code) {
  switch (code) {
    case 1: return kFacFss;
    case 2: return kFacDel;
    case 3: return kFacGnd;
    case 4: return kFacTwr;
    case 5: return kFacApp;
    case 6: return kFacCtr;
    default: return -1;
  }
}

int IvaoFacility(std::string_view position) {
  if (position == "TWR") return kFacTwr;
  if (position == "GND") return kFacGnd;
  if (position == "APP" || position == "DEP") return kFacApp;
  if (position == "DEL") return kFacDel;
  if (position == "CTR") return kFacCtr;
  if (position == "FSS") return kFacFss;
  return -1;
}

std::vector<std::string> AtisLines(const Json* arr) {
  std::vector<std::string> lines;
  if (!arr || !arr->is_array()) return lines;
  for (const Json& l : *arr)
    if (l.is_string()) lines.push_back(Utf8ToLatin1(l.get_ref<const std::string&>()));
  return lines;
}

}  // namespace

std::optional<std::string> VatsimJsonDataUrl(std::string_view statusJson) {
  Json doc;
  std::string error;
  if (!ParseDoc(statusJson, doc, error)) return std::nullopt;
  const Json* data = Member(doc, "data");
  if (!data) return std::nullopt;
  const Json* v3 = Member(*data, "v3");
  if (!v3 || !v3->is_array()) return std::nullopt;
  for (const Json& u : *v3)
    if (u.is_string() && !u.get_ref<const std::string&>().empty()) return u.get<std::string>();
  return std::nullopt;
}

namespace {

// The VATSIM feed read as a stream of events: two thousand pilots are read
// without building the document, member by member into the records.
class VatsimSax : public nlohmann::json_sax<Json> {
public:
  VatsimSax(const AirportFinder& airports, OnlineData& out) : airports_(airports), out_(out) {}

  bool null() override { return true; }
  bool boolean(bool) override { return true; }
  bool number_integer(number_integer_t v) override { return Number(static_cast<double>(v)); }
  bool number_unsigned(number_unsigned_t v) override { return Number(static_cast<double>(v)); }
  bool number_float(number_float_t v, const string_t&) override { return Number(std::isfinite(v) ? v : 0.0); }
  bool string(string_t& v) override {
    if (depth_ == 2 && section_ == Section::General && key_ == "update_timestamp") out_.Stamp = IsoStamp(v);
    if (depth_ == 3 && section_ == Section::Pilots) {
      if (key_ == "callsign") pilot_.Callsign = Utf8ToLatin1(v);
      else if (key_ == "name") pilot_.RealName = Utf8ToLatin1(v);
      else Number(Val(v));
    } else if (depth_ == 4 && section_ == Section::Pilots && inPlan_) {
      if (key_ == "departure") pilot_.Departure = Utf8ToLatin1(v);
      else if (key_ == "arrival") pilot_.Destination = Utf8ToLatin1(v);
      else if (key_ == "aircraft_short") pilot_.AircraftType = Utf8ToLatin1(v);
    } else if (depth_ == 3 && section_ == Section::Controllers) {
      if (key_ == "callsign") callsign_ = Utf8ToLatin1(v);
      else if (key_ == "name") name_ = Utf8ToLatin1(v);
      else Number(Val(v));
    }
    return true;
  }
  bool binary(binary_t&) override { return true; }
  bool start_object(std::size_t) override {
    if (depth_ == 0) isObject_ = true;
    if (depth_ == 1) section_ = key_ == "general" ? Section::General : Section::None;
    if (depth_ == 2 && section_ == Section::Pilots) {
      pilot_ = OnlineClientRec{};
      haveLat_ = haveLon_ = false;
      ++out_.PilotLines;
    }
    if (depth_ == 2 && section_ == Section::Controllers) {
      callsign_.clear();
      name_.clear();
      frequency_ = 0;
      facility_ = 0;
      ++out_.AtcLines;
    }
    if (depth_ == 3 && section_ == Section::Pilots && key_ == "flight_plan") inPlan_ = true;
    ++depth_;
    return true;
  }
  bool end_object() override {
    --depth_;
    if (depth_ == 3) inPlan_ = false;
    if (depth_ == 2 && section_ == Section::Pilots) {
      if (haveLat_ && haveLon_ && ValidLatLon(pilot_.Latitude, pilot_.Longitude)) out_.Pilots.push_back(std::move(pilot_));
    }
    if (depth_ == 2 && section_ == Section::Controllers) {
      int facility = VatsimFacility(facility_);
      if (facility >= 0 && !callsign_.empty())
        AddFeedStation(callsign_, facility, false, 0, 0, false, CSng(frequency_), name_, airports_, out_, nullptr);
    }
    return true;
  }
  bool start_array(std::size_t) override {
    if (depth_ == 1) section_ = key_ == "pilots" ? Section::Pilots : key_ == "controllers" ? Section::Controllers : Section::None;
    ++depth_;
    return true;
  }
  bool end_array() override {
    --depth_;
    if (depth_ == 1) section_ = Section::None;
    return true;
  }
  bool key(string_t& k) override {
    key_.assign(k);
    return true;
  }
  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

  bool IsObject() const { return isObject_; }

private:
  enum class Section { None, General, Pilots, Controllers };

  bool Number(double v) {
    if (depth_ == 3 && section_ == Section::Pilots) {
      if (key_ == "latitude") pilot_.Latitude = CSng(v), haveLat_ = true;
      else if (key_ == "longitude") pilot_.Longitude = CSng(v), haveLon_ = true;
      else if (key_ == "altitude") pilot_.Altitude = CLng(v);
      else if (key_ == "groundspeed") pilot_.GroundSpeed = CLng(v);
      else if (key_ == "heading") pilot_.Heading = CLng(v);
    } else if (depth_ == 3 && section_ == Section::Controllers) {
      if (key_ == "frequency") frequency_ = v;
      else if (key_ == "facility") facility_ = static_cast<int>(std::clamp(v, -1.0, 100.0));
    }
    return true;
  }

  const AirportFinder& airports_;
  OnlineData& out_;
  int depth_ = 0;
  bool isObject_ = false;
  Section section_ = Section::None;
  std::string key_;
  bool inPlan_ = false;
  OnlineClientRec pilot_;
  bool haveLat_ = false, haveLon_ = false;
  std::string callsign_, name_;
  double frequency_ = 0;
  int facility_ = 0;
};

}  // namespace

bool ParseVatsimJson(std::string_view text, const AirportFinder& airports, OnlineData& out, std::string& error) {
  OnlineData fresh;
  fresh.Network = OnlineNetwork::Vatsim;
  fresh.Pilots.reserve(text.size() / 1200 + 1);
  VatsimSax sax(airports, fresh);
  if (!Json::sax_parse(text.begin(), text.end(), &sax) || !sax.IsObject()) {
    error = "not a JSON document";
    return false;
  }
  out = std::move(fresh);
  Finish(out);
  if (out.Pilots.empty()) {
    error = "no pilot in the feed";
    return false;
  }
  return true;
}

bool ParseIvaoJson(std::string_view text, const AirportFinder& airports, OnlineData& out, std::string& error) {
  Json doc;
  if (!ParseDoc(text, doc, error)) return false;
  out = OnlineData{};
  out.Network = OnlineNetwork::Ivao;
  out.Stamp = IsoStamp(Str(doc, "updatedAt"));
  const Json* clients = Member(doc, "clients");
  if (clients) {
    if (const Json* pilots = Member(*clients, "pilots"); pilots && pilots->is_array()) {
      out.Pilots.reserve(pilots->size());
      for (const Json& p : *pilots) {
        if (!p.is_object()) continue;
        ++out.PilotLines;
        const Json* track = Member(p, "lastTrack");
        double lat = 0, lon = 0;
        if (!track || !Num(*track, "latitude", lat) || !Num(*track, "longitude", lon) || !ValidLatLon(lat, lon))
          continue;
        OnlineClientRec rec;
        rec.Callsign = Utf8ToLatin1(Str(p, "callsign"));
        double uid = 0;
        if (Num(p, "userId", uid)) rec.RealName = std::to_string(CLng(uid));
        rec.Latitude = CSng(lat);
        rec.Longitude = CSng(lon);
        rec.Altitude = CLng(NumOr0(*track, "altitude"));
        rec.GroundSpeed = CLng(NumOr0(*track, "groundSpeed"));
        rec.Heading = CLng(NumOr0(*track, "heading"));
        if (const Json* fp = Member(p, "flightPlan"); fp && fp->is_object()) {
          rec.Departure = Utf8ToLatin1(Str(*fp, "departureId"));
          rec.Destination = Utf8ToLatin1(Str(*fp, "arrivalId"));
          if (const Json* ac = Member(*fp, "aircraft"); ac && ac->is_object())
            rec.AircraftType = Utf8ToLatin1(Str(*ac, "icaoCode"));
          else
            rec.AircraftType = Utf8ToLatin1(Str(*fp, "aircraftId"));
        }
        out.Pilots.push_back(std::move(rec));
      }
    }
    if (const Json* atcs = Member(*clients, "atcs"); atcs && atcs->is_array()) {
      for (const Json& c : *atcs) {
        if (!c.is_object()) continue;
        ++out.AtcLines;
        std::string callsign = Utf8ToLatin1(Str(c, "callsign"));
        const Json* session = Member(c, "atcSession");
        int facility = session ? IvaoFacility(Str(*session, "position")) : -1;
        float freq = session ? CSng(NumOr0(*session, "frequency")) : 0.0f;
        double lat = 0, lon = 0;
        const Json* track = Member(c, "lastTrack");
        bool hasPos = track && Num(*track, "latitude", lat) && Num(*track, "longitude", lon) && ValidLatLon(lat, lon);
        const Json* atis = Member(c, "atis");
        std::vector<std::string> lines = AtisLines(atis ? Member(*atis, "lines") : nullptr);
        std::string name;
        double uid = 0;
        if (Num(c, "userId", uid)) name = std::to_string(CLng(uid));
        if (callsign.empty()) continue;
        AddFeedStation(callsign, facility, true, CSng(lat), CSng(lon), hasPos, freq, name, airports, out, &lines);
      }
    }
  }
  Finish(out);
  if (out.Pilots.empty()) {
    error = "no pilot in the feed";
    return false;
  }
  return true;
}

}  // namespace orv

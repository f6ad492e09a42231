#include "simlink/SimSource.h"

#include "simlink/ImagePartner.h"
#include "simlink/SimData.h"
#include "simlink/SimImage.h"

namespace orv {

namespace {

// Stand 'V' at Frankfurt, the centre of the demo database.
constexpr double kParkLat = 50.0333;
constexpr double kParkLon = 8.5706;
constexpr double kParkAlt = 364;
constexpr double kParkHeading = 250;

// The image lives in a base that is built before the partner that refers to it.
struct ImageHolder {
  OffsetImage parkedImage;
};

class ParkedSource : private ImageHolder, public ImagePartner {
 public:
  explicit ParkedSource(Clock* clock) : ImagePartner(parkedImage, nullptr, clock) {
    ParkImage(parkedImage, kParkLat, kParkLon, kParkAlt, kParkHeading);
  }
};

}  // namespace

void ParkImage(OffsetImage& image, double lat, double lon, double altFeet, double heading) {
  PutPosition(image, lat, lon, altFeet, heading, 0, 0, true);
  PutGroundAltitude(image, altFeet);
  PutSpeeds(image, 0, 0, 0, 0);
  PutTime(image, 12, 0, 0, 12, 0);
  PutFuelTank(image, 1, 0.75, 40);  // left main
  PutFuelTank(image, 2, 0.75, 40);  // right main
  PutMagVar(image, 0);
  PutWind(image, 0, 0);
  PutCom1(image, 122.80f);
  // Calm standard weather: 15 C, dew point 10 C, 1013 hPa, 20 miles.
  image.Put<std::int16_t>(fsoff::SurfaceTemperature, 15 * 256);
  image.Put<std::int16_t>(fsoff::AmbientTemperature, 15 * 256);
  image.Put<std::int16_t>(fsoff::DewPoint, 10 * 256);
  image.Put<std::uint16_t>(fsoff::Qnh, 16212);
  image.Put<std::int16_t>(fsoff::Visibility, 2000);
  // The aircraft's identity as ATC knows it: tail number and type.
  image.Fill(fsoff::AtcStrings, 0, 72);
  image.WriteBytes(fsoff::AtcStrings + 12, "D-EORV", 6);
  image.WriteBytes(fsoff::AtcStrings + 48, "Cessna 172", 10);
  PutModuleVersions(image);
}

std::unique_ptr<IpcPlatform> OpenSimSource(std::string_view source, std::string& error, Clock* clock) {
  error.clear();
  if (source == "builtin") return std::make_unique<ParkedSource>(clock);
  error = "Unknown simulator source '" + std::string(source) + "' (known: builtin)";
  return nullptr;
}

}  // namespace orv

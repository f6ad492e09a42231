#include "dbm/MagneticModel.h"

#include <cmath>
#include <numbers>
#include <sstream>

#include "database/MagVar.h"

namespace orv::dbm {

namespace fs = std::filesystem;

bool MagneticModel::Parse(std::string_view text, std::string& error) {
  std::istringstream in{std::string(text)};
  std::string line;
  int lineNo = 0;
  bool head = false, ended = false;
  int terms = 0;
  while (std::getline(in, line)) {
    ++lineNo;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.find_first_not_of(" \t") == std::string::npos) continue;
    if (line.rfind("9999", 0) == 0) {
      ended = true;
      break;
    }
    std::istringstream ls(line);
    if (!head) {
      std::string date;
      if (!(ls >> epoch_ >> name_ >> date) || epoch_ < 1900 || epoch_ > 2100) {
        error = "line " + std::to_string(lineNo) + ": the head line wants epoch, model name and date";
        return false;
      }
      head = true;
      continue;
    }
    int n = 0, m = 0;
    double g = 0, h = 0, gd = 0, hd = 0;
    if (!(ls >> n >> m >> g >> h >> gd >> hd) || n < 1 || n > kMaxDegree || m < 0 || m > n ||
        !std::isfinite(g) || !std::isfinite(h) || !std::isfinite(gd) || !std::isfinite(hd)) {
      error = "line " + std::to_string(lineNo) + ": a coefficient line wants n m g h gdot hdot with 0 <= m <= n <= 12";
      return false;
    }
    g_[n][m] = g;
    h_[n][m] = h;
    gDot_[n][m] = gd;
    hDot_[n][m] = hd;
    ++terms;
  }
  if (!head || !ended || terms == 0) {
    error = "the coefficient list is missing or not ended by its line of nines";
    return false;
  }
  return true;
}

bool MagneticModel::Load(const fs::path& path, std::string& error) {
  auto text = ReadWholeText(path);
  if (!text) {
    error = path.string() + ": the file cannot be read";
    return false;
  }
  if (!Parse(*text, error)) {
    error = path.string() + ": " + error;
    return false;
  }
  return true;
}

void MagneticModel::Field(double latDeg, double lonDeg, double heightKm, double year, double& x, double& y,
                          double& z) const {
  constexpr double kA = 6378.137;                 // WGS 84 semi-major axis, km
  constexpr double kF = 1.0 / 298.257223563;
  constexpr double kE2 = kF * (2.0 - kF);
  constexpr double kRef = 6371.2;                 // the model's reference radius, km
  const double rad = std::numbers::pi / 180.0;
  double phi = latDeg * rad, lambda = lonDeg * rad;
  // Geodetic to geocentric spherical.
  double sinPhi = std::sin(phi), cosPhi = std::cos(phi);
  double rc = kA / std::sqrt(1.0 - kE2 * sinPhi * sinPhi);
  double p = (rc + heightKm) * cosPhi;
  double zc = (rc * (1.0 - kE2) + heightKm) * sinPhi;
  double r = std::sqrt(p * p + zc * zc);
  double phiC = std::asin(zc / r);
  double theta = std::numbers::pi / 2 - phiC;     // colatitude
  double ct = std::cos(theta), st = std::sin(theta);
  double dt = year - epoch_;

  // Schmidt semi-normalised associated Legendre functions and their
  // derivatives with respect to the colatitude, by the Gauss recursion and
  // the normalising factors.
  double P[kMaxDegree + 1][kMaxDegree + 1] = {}, dP[kMaxDegree + 1][kMaxDegree + 1] = {};
  double S[kMaxDegree + 1][kMaxDegree + 1] = {};
  P[0][0] = 1;
  S[0][0] = 1;
  for (int n = 1; n <= kMaxDegree; ++n) {
    for (int m = 0; m <= n; ++m) {
      if (n == m) {
        P[n][m] = st * P[n - 1][m - 1];
        dP[n][m] = ct * P[n - 1][m - 1] + st * dP[n - 1][m - 1];
      } else {
        double k = n == 1 ? 0.0 : static_cast<double>((n - 1) * (n - 1) - m * m) / ((2 * n - 1) * (2 * n - 3));
        P[n][m] = ct * P[n - 1][m] - (n >= 2 ? k * P[n - 2][m] : 0.0);
        dP[n][m] = ct * dP[n - 1][m] - st * P[n - 1][m] - (n >= 2 ? k * dP[n - 2][m] : 0.0);
      }
      if (m == 0) S[n][0] = S[n - 1][0] * (2.0 * n - 1) / n;
      else S[n][m] = S[n][m - 1] * std::sqrt(static_cast<double>((n - m + 1) * (m == 1 ? 2 : 1)) / (n + m));
    }
  }
  double br = 0, bt = 0, bp = 0;
  double ratio = kRef / r;
  double ar = ratio * ratio;
  for (int n = 1; n <= kMaxDegree; ++n) {
    ar *= ratio;  // (a / r)^(n + 2)
    for (int m = 0; m <= n; ++m) {
      double g = g_[n][m] + dt * gDot_[n][m];
      double h = h_[n][m] + dt * hDot_[n][m];
      double cm = std::cos(m * lambda), sm = std::sin(m * lambda);
      double pn = P[n][m] * S[n][m], dpn = dP[n][m] * S[n][m];
      double t1 = g * cm + h * sm;
      br += ar * (n + 1) * t1 * pn;
      bt -= ar * t1 * dpn;
      bp += ar * m * (g * sm - h * cm) * pn;
    }
  }
  bp = st > 1e-10 ? bp / st : 0.0;
  // Geocentric north, east, down; then turned to the geodetic vertical.
  double xs = -bt, ys = bp, zs = -br;
  double psi = phiC - phi;
  x = xs * std::cos(psi) - zs * std::sin(psi);
  y = ys;
  z = xs * std::sin(psi) + zs * std::cos(psi);
}

double MagneticModel::Declination(double latDeg, double lonDeg, double heightKm, double year) const {
  double x = 0, y = 0, z = 0;
  Field(latDeg, lonDeg, heightKm, year, x, y, z);
  return std::atan2(y, x) * 180.0 / std::numbers::pi;
}

Bytes BuildVariationGrid(const MagneticModel& model, double year) {
  return BuildMagVarFile([&](int lat, int lon) {
    double la = lat >= 90 ? 89.99 : lat <= -90 ? -89.99 : lat;
    return model.Declination(la, lon > 180 ? lon - 360 : lon, 0.0, year);
  });
}

fs::path FindWmmFile() {
  std::error_code ec;
  fs::path exe = fs::read_symlink("/proc/self/exe", ec);
  std::vector<fs::path> starts;
  if (!ec) starts.push_back(exe.parent_path());
  starts.push_back(fs::current_path(ec));
  for (fs::path dir : starts) {
    for (int up = 0; up < 5 && !dir.empty(); ++up) {
      fs::path candidate = dir / "data" / "wmm" / "WMM2025.COF";
      if (fs::exists(candidate, ec)) return candidate;
      if (dir == dir.parent_path()) break;
      dir = dir.parent_path();
    }
  }
  return {};
}

}  // namespace orv::dbm

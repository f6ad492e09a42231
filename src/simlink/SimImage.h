// Writing natural values into an offset image, the inverse of the readers of
// SimData: what an adapter (the built-in simulator, FlightGear, X-Plane) does
// to keep its image fresh. Each function writes the raw words that the
// matching reader turns back into the given values.
#pragma once

#include <cstdint>
#include <span>

#include "simlink/OffsetImage.h"
#include "simlink/SimData.h"

namespace orv {

// Position block at 0x0560: latitude and longitude (64-bit, high and low
// words), altitude in feet (metres, integer and fraction), pitch, bank and
// true heading in degrees. The altimeter at 0x3324 gets the altitude in feet
// (0x0C18 left at feet) and the ground flag 0x0366 the on-ground state.
void PutPosition(OffsetImage& image, double lat, double lon, double altFeet, double trueHeading,
                 double pitch = 0, double bank = 0, bool onGround = true);
void PutGroundAltitude(OffsetImage& image, double feet);
// Ground speed, TAS and IAS in knots; vertical speed in feet per minute.
void PutSpeeds(OffsetImage& image, double groundSpeedKt, double tasKt, double iasKt, double verticalSpeedFpm);
void PutTime(OffsetImage& image, int localHour, int localMinute, int second, int utcHour, int utcMinute);
// Seven tanks of (level, capacity); the level is the fraction full.
void PutFuelTank(OffsetImage& image, int tank, double fractionFull, double capacityGallons);
void PutMagVar(OffsetImage& image, double degrees);
void PutWind(OffsetImage& image, double speedKt, double dirDegrees);
// The COM1 word for a frequency in MHz (its BCD as the radio writers build it).
void PutCom1(OffsetImage& image, float mhz);
// A traffic table: head, extended entries and entries (entry size 40).
void PutTrafficTable(OffsetImage& image, bool airborne, std::span<const TrafficEntry> entries,
                     std::span<const TrafficExtEntry> ext);

}  // namespace orv

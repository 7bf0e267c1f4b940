// The layout of every database the program keeps: database names and type numbers, and the
// property id of each record field (identifier in the high word, value type in the low word).
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/prop_val.hpp"

namespace aerix::schema {

using platform::kCevtBool;
using platform::kCevtI2;
using platform::kCevtI4;
using platform::kCevtLpwstr;
using platform::kCevtR8;
using platform::MakePropId;

// Database type numbers.
inline constexpr std::uint32_t kMapsType = 19900;
inline constexpr std::uint32_t kPlanType = 19901;
inline constexpr std::uint32_t kWindType = 19905;
inline constexpr std::uint32_t kAircraftType = 20001;
inline constexpr std::uint32_t kStationsType = 20002;
inline constexpr std::uint32_t kEnvelopesType = 20003;

// Fixed database names.
inline constexpr std::u16string_view kMapsName = u"Maps";
inline constexpr std::u16string_view kWindName = u"WindTable";
inline constexpr std::u16string_view kZeroWindName = u"ZeroWindTable";
inline constexpr std::u16string_view kAircraftName = u"Aircraft";
inline constexpr std::u16string_view kStationsName = u"Stations";
inline constexpr std::u16string_view kEnvelopesName = u"Envelopes";

// WaypointRecord.
inline constexpr std::uint32_t kWptName = MakePropId(100, kCevtLpwstr);
inline constexpr std::uint32_t kWptIdent = MakePropId(101, kCevtLpwstr);
inline constexpr std::uint32_t kWptLatitude = MakePropId(102, kCevtI4);
inline constexpr std::uint32_t kWptLongitude = MakePropId(103, kCevtI4);
inline constexpr std::uint32_t kWptValue104 = MakePropId(104, kCevtR8);
inline constexpr std::uint32_t kWptType = MakePropId(105, kCevtI2);
inline constexpr std::uint32_t kWptText106 = MakePropId(106, kCevtLpwstr);
inline constexpr std::uint32_t kWptNumber107 = MakePropId(107, kCevtI2);
inline constexpr std::uint32_t kWptExtraText = MakePropId(108, kCevtLpwstr);
inline constexpr std::uint16_t kWptFurtherFirst = 109;  // 109-118, text each

// MapRecord.
inline constexpr std::uint32_t kMapPath = MakePropId(300, kCevtLpwstr);
inline constexpr std::uint16_t kMapCalibrationFirst = 301;  // 301-313, double each

// SectorRecord.
inline constexpr std::uint32_t kSecNumber = MakePropId(400, kCevtI2);
inline constexpr std::uint32_t kSecText401 = MakePropId(401, kCevtLpwstr);
inline constexpr std::uint32_t kSecText402 = MakePropId(402, kCevtLpwstr);
inline constexpr std::uint32_t kSecText403 = MakePropId(403, kCevtLpwstr);
inline constexpr std::uint32_t kSecText404 = MakePropId(404, kCevtLpwstr);
inline constexpr std::uint32_t kSecTrueCourse = MakePropId(405, kCevtR8);
inline constexpr std::uint32_t kSecDistance = MakePropId(406, kCevtR8);
inline constexpr std::uint32_t kSecTime = MakePropId(407, kCevtR8);
inline constexpr std::uint32_t kSecTrueAirspeed = MakePropId(408, kCevtI2);
inline constexpr std::uint32_t kSecGroundSpeed = MakePropId(409, kCevtI2);
inline constexpr std::uint32_t kSecVariation = MakePropId(410, kCevtR8);
inline constexpr std::uint32_t kSecMagneticHeading = MakePropId(411, kCevtR8);
inline constexpr std::uint32_t kSecWindText = MakePropId(412, kCevtLpwstr);
inline constexpr std::uint32_t kSecFuel = MakePropId(413, kCevtR8);
inline constexpr std::uint32_t kSecStartLatitude = MakePropId(414, kCevtI4);
inline constexpr std::uint32_t kSecStartLongitude = MakePropId(415, kCevtI4);
inline constexpr std::uint32_t kSecEndLatitude = MakePropId(416, kCevtI4);
inline constexpr std::uint32_t kSecEndLongitude = MakePropId(417, kCevtI4);
inline constexpr std::uint32_t kSecPhase = MakePropId(418, kCevtI2);
inline constexpr std::uint32_t kSecAltitudeText = MakePropId(419, kCevtLpwstr);

// WindRecord.
inline constexpr std::uint32_t kWindAltitude = MakePropId(500, kCevtI4);
inline constexpr std::uint32_t kWindDirection = MakePropId(501, kCevtI2);
inline constexpr std::uint32_t kWindSpeed = MakePropId(502, kCevtI2);
inline constexpr std::uint32_t kWindTemperature = MakePropId(503, kCevtI2);

// AircraftRecord.
inline constexpr std::uint32_t kAcName = MakePropId(600, kCevtLpwstr);
inline constexpr std::uint32_t kAcClimbRate = MakePropId(601, kCevtR8);
inline constexpr std::uint32_t kAcClimbFuelFlow = MakePropId(602, kCevtR8);
inline constexpr std::uint32_t kAcClimbTas = MakePropId(603, kCevtI2);
inline constexpr std::uint32_t kAcCruiseFuelFlow = MakePropId(604, kCevtR8);
inline constexpr std::uint32_t kAcCruiseTas = MakePropId(605, kCevtI2);
inline constexpr std::uint32_t kAcDescentRate = MakePropId(606, kCevtR8);
inline constexpr std::uint32_t kAcDescentFuelFlow = MakePropId(607, kCevtR8);
inline constexpr std::uint32_t kAcDescentTas = MakePropId(608, kCevtI2);
inline constexpr std::uint32_t kAcMaxTakeoffWeight = MakePropId(609, kCevtI4);
inline constexpr std::uint32_t kAcEmptyWeight = MakePropId(610, kCevtI4);
inline constexpr std::uint32_t kAcEmptyArm = MakePropId(611, kCevtR8);
inline constexpr std::uint32_t kAcMaxZeroFuelWeight = MakePropId(612, kCevtI4);
inline constexpr std::uint32_t kAcMaxLandingWeight = MakePropId(613, kCevtI4);
inline constexpr std::uint32_t kAcSpare614 = MakePropId(614, kCevtR8);
inline constexpr std::uint32_t kAcSpare615 = MakePropId(615, kCevtR8);
inline constexpr std::uint32_t kAcArmUnits = MakePropId(616, kCevtI2);
inline constexpr std::uint32_t kAcTypeDesignator = MakePropId(617, kCevtLpwstr);
inline constexpr std::uint32_t kAcMaxRampWeight = MakePropId(618, kCevtI4);
inline constexpr std::uint32_t kAcSpare619 = MakePropId(619, kCevtR8);
inline constexpr std::uint32_t kAcSpare620 = MakePropId(620, kCevtR8);
inline constexpr std::uint32_t kAcTaxiFuel = MakePropId(621, kCevtR8);
inline constexpr std::uint32_t kAcWeightUnits = MakePropId(622, kCevtI2);
inline constexpr std::uint32_t kAcFuelUnits = MakePropId(623, kCevtI2);
inline constexpr std::uint32_t kAcGraphArmMax = MakePropId(624, kCevtR8);
inline constexpr std::uint32_t kAcGraphArmMin = MakePropId(625, kCevtR8);
inline constexpr std::uint32_t kAcGraphWeightMax = MakePropId(626, kCevtR8);
inline constexpr std::uint32_t kAcGraphWeightMin = MakePropId(627, kCevtR8);
inline constexpr std::uint32_t kAcFlag628 = MakePropId(628, kCevtBool);

// StationRecord.
inline constexpr std::uint32_t kStAircraftName = MakePropId(700, kCevtLpwstr);
inline constexpr std::uint32_t kStStationName = MakePropId(701, kCevtLpwstr);
inline constexpr std::uint32_t kStKind = MakePropId(702, kCevtI2);
inline constexpr std::uint32_t kStArm = MakePropId(703, kCevtR8);
inline constexpr std::uint32_t kStWeight = MakePropId(704, kCevtI4);

// EnvelopePointRecord.
inline constexpr std::uint32_t kEnvPointNumber = MakePropId(800, kCevtI2);
inline constexpr std::uint32_t kEnvAircraftName = MakePropId(801, kCevtLpwstr);
inline constexpr std::uint32_t kEnvArm = MakePropId(802, kCevtR8);
inline constexpr std::uint32_t kEnvWeight = MakePropId(803, kCevtI4);

// Database-information flags used at creation: name, type and sort orders valid; the envelope
// points' database is created with name and type only (its sort order still applies).
inline constexpr std::uint16_t kCreateFlags = 7;
inline constexpr std::uint16_t kEnvelopeCreateFlags = 3;

}  // namespace aerix::schema

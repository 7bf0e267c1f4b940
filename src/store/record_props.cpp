#include "store/record_props.hpp"

#include "store/schema.hpp"

namespace aerix {

using platform::PropVal;
using namespace schema;

namespace {

std::uint16_t Num(std::uint32_t propId) {
    return platform::PropNumber(propId);
}

// Copies the value into the field when the stored type is the field's (it always is for a
// record this program wrote; anything else leaves the field as it was).
template <typename T>
void Take(const PropVal& p, T& field) {
    if (auto* v = std::get_if<T>(&p.value))
        field = *v;
}

}  // namespace

std::vector<PropVal> ToProps(const WaypointRecord& r) {
    std::vector<PropVal> p{
        PropVal::Text(Num(kWptName), r.Name),
        PropVal::Text(Num(kWptIdent), r.Ident),
        PropVal::I4(Num(kWptLatitude), r.Latitude),
        PropVal::I4(Num(kWptLongitude), r.Longitude),
        PropVal::R8(Num(kWptValue104), r.Value104),
        PropVal::I2(Num(kWptType), r.WaypointType),
        PropVal::Text(Num(kWptText106), r.Text106),
        PropVal::I2(Num(kWptNumber107), r.Number107),
        PropVal::Text(Num(kWptExtraText), r.ExtraText),
    };
    for (std::size_t i = 0; i < r.FurtherTexts.size(); ++i)
        p.push_back(
            PropVal::Text(static_cast<std::uint16_t>(kWptFurtherFirst + i), r.FurtherTexts[i]));
    return p;
}

void FromProps(std::span<const PropVal> props, WaypointRecord& r) {
    for (const PropVal& p : props) {
        switch (p.propId) {
            case kWptName:
                Take(p, r.Name);
                break;
            case kWptIdent:
                Take(p, r.Ident);
                break;
            case kWptLatitude:
                Take(p, r.Latitude);
                break;
            case kWptLongitude:
                Take(p, r.Longitude);
                break;
            case kWptValue104:
                Take(p, r.Value104);
                break;
            case kWptType:
                Take(p, r.WaypointType);
                break;
            case kWptText106:
                Take(p, r.Text106);
                break;
            case kWptNumber107:
                Take(p, r.Number107);
                break;
            case kWptExtraText:
                Take(p, r.ExtraText);
                break;
            default: {
                int i = Num(p.propId) - kWptFurtherFirst;
                if (i >= 0 && i < 10 && platform::PropType(p.propId) == kCevtLpwstr)
                    Take(p, r.FurtherTexts[static_cast<std::size_t>(i)]);
            }
        }
    }
}

std::vector<PropVal> ToProps(const MapRecord& r) {
    std::vector<PropVal> p{PropVal::Text(Num(kMapPath), r.Path)};
    for (std::size_t i = 0; i < r.Calibration.size(); ++i)
        p.push_back(
            PropVal::R8(static_cast<std::uint16_t>(kMapCalibrationFirst + i), r.Calibration[i]));
    return p;
}

void FromProps(std::span<const PropVal> props, MapRecord& r) {
    for (const PropVal& p : props) {
        if (p.propId == kMapPath) {
            Take(p, r.Path);
            continue;
        }
        int i = Num(p.propId) - kMapCalibrationFirst;
        if (i >= 0 && i < 13 && platform::PropType(p.propId) == kCevtR8)
            Take(p, r.Calibration[static_cast<std::size_t>(i)]);
    }
}

std::vector<PropVal> ToProps(const SectorRecord& r) {
    return {
        PropVal::I2(400, r.SectorNumber),  PropVal::Text(401, r.Text401),
        PropVal::Text(402, r.Text402),     PropVal::Text(403, r.Text403),
        PropVal::Text(404, r.Text404),     PropVal::R8(405, r.TrueCourse),
        PropVal::R8(406, r.Distance),      PropVal::R8(407, r.Time),
        PropVal::I2(408, r.TrueAirspeed),  PropVal::I2(409, r.GroundSpeed),
        PropVal::R8(410, r.Variation),     PropVal::R8(411, r.MagneticHeading),
        PropVal::Text(412, r.WindText),    PropVal::R8(413, r.Fuel),
        PropVal::I4(414, r.StartLatitude), PropVal::I4(415, r.StartLongitude),
        PropVal::I4(416, r.EndLatitude),   PropVal::I4(417, r.EndLongitude),
        PropVal::I2(418, r.Phase),         PropVal::Text(419, r.AltitudeText),
    };
}

void FromProps(std::span<const PropVal> props, SectorRecord& r) {
    for (const PropVal& p : props) {
        switch (p.propId) {
            case kSecNumber:
                Take(p, r.SectorNumber);
                break;
            case kSecText401:
                Take(p, r.Text401);
                break;
            case kSecText402:
                Take(p, r.Text402);
                break;
            case kSecText403:
                Take(p, r.Text403);
                break;
            case kSecText404:
                Take(p, r.Text404);
                break;
            case kSecTrueCourse:
                Take(p, r.TrueCourse);
                break;
            case kSecDistance:
                Take(p, r.Distance);
                break;
            case kSecTime:
                Take(p, r.Time);
                break;
            case kSecTrueAirspeed:
                Take(p, r.TrueAirspeed);
                break;
            case kSecGroundSpeed:
                Take(p, r.GroundSpeed);
                break;
            case kSecVariation:
                Take(p, r.Variation);
                break;
            case kSecMagneticHeading:
                Take(p, r.MagneticHeading);
                break;
            case kSecWindText:
                Take(p, r.WindText);
                break;
            case kSecFuel:
                Take(p, r.Fuel);
                break;
            case kSecStartLatitude:
                Take(p, r.StartLatitude);
                break;
            case kSecStartLongitude:
                Take(p, r.StartLongitude);
                break;
            case kSecEndLatitude:
                Take(p, r.EndLatitude);
                break;
            case kSecEndLongitude:
                Take(p, r.EndLongitude);
                break;
            case kSecPhase:
                Take(p, r.Phase);
                break;
            case kSecAltitudeText:
                Take(p, r.AltitudeText);
                break;
            default:
                break;
        }
    }
}

std::vector<PropVal> ToProps(const WindRecord& r) {
    return {PropVal::I4(500, r.Altitude), PropVal::I2(501, r.Direction), PropVal::I2(502, r.Speed),
            PropVal::I2(503, r.Temperature)};
}

void FromProps(std::span<const PropVal> props, WindRecord& r) {
    for (const PropVal& p : props) {
        switch (p.propId) {
            case kWindAltitude:
                Take(p, r.Altitude);
                break;
            case kWindDirection:
                Take(p, r.Direction);
                break;
            case kWindSpeed:
                Take(p, r.Speed);
                break;
            case kWindTemperature:
                Take(p, r.Temperature);
                break;
            default:
                break;
        }
    }
}

std::vector<PropVal> ToProps(const AircraftRecord& r) {
    return {
        PropVal::Text(600, r.Name),
        PropVal::R8(601, r.ClimbRate),
        PropVal::R8(602, r.ClimbFuelFlow),
        PropVal::I2(603, r.ClimbTas),
        PropVal::R8(604, r.CruiseFuelFlow),
        PropVal::I2(605, r.CruiseTas),
        PropVal::R8(606, r.DescentRate),
        PropVal::R8(607, r.DescentFuelFlow),
        PropVal::I2(608, r.DescentTas),
        PropVal::I4(609, r.MaxTakeoffWeight),
        PropVal::I4(610, r.EmptyWeight),
        PropVal::R8(611, r.EmptyArm),
        PropVal::I4(612, r.MaxZeroFuelWeight),
        PropVal::I4(613, r.MaxLandingWeight),
        PropVal::R8(614, r.Spare614),
        PropVal::R8(615, r.Spare615),
        PropVal::I2(616, r.ArmUnits),
        PropVal::Text(617, r.TypeDesignator),
        PropVal::I4(618, r.MaxRampWeight),
        PropVal::R8(619, r.Spare619),
        PropVal::R8(620, r.Spare620),
        PropVal::R8(621, r.TaxiFuel),
        PropVal::I2(622, r.WeightUnits),
        PropVal::I2(623, r.FuelUnits),
        PropVal::R8(624, r.GraphArmMax),
        PropVal::R8(625, r.GraphArmMin),
        PropVal::R8(626, r.GraphWeightMax),
        PropVal::R8(627, r.GraphWeightMin),
        PropVal::Bool(628, r.Flag628),
    };
}

void FromProps(std::span<const PropVal> props, AircraftRecord& r) {
    for (const PropVal& p : props) {
        switch (p.propId) {
            case kAcName:
                Take(p, r.Name);
                break;
            case kAcClimbRate:
                Take(p, r.ClimbRate);
                break;
            case kAcClimbFuelFlow:
                Take(p, r.ClimbFuelFlow);
                break;
            case kAcClimbTas:
                Take(p, r.ClimbTas);
                break;
            case kAcCruiseFuelFlow:
                Take(p, r.CruiseFuelFlow);
                break;
            case kAcCruiseTas:
                Take(p, r.CruiseTas);
                break;
            case kAcDescentRate:
                Take(p, r.DescentRate);
                break;
            case kAcDescentFuelFlow:
                Take(p, r.DescentFuelFlow);
                break;
            case kAcDescentTas:
                Take(p, r.DescentTas);
                break;
            case kAcMaxTakeoffWeight:
                Take(p, r.MaxTakeoffWeight);
                break;
            case kAcEmptyWeight:
                Take(p, r.EmptyWeight);
                break;
            case kAcEmptyArm:
                Take(p, r.EmptyArm);
                break;
            case kAcMaxZeroFuelWeight:
                Take(p, r.MaxZeroFuelWeight);
                break;
            case kAcMaxLandingWeight:
                Take(p, r.MaxLandingWeight);
                break;
            case kAcSpare614:
                Take(p, r.Spare614);
                break;
            case kAcSpare615:
                Take(p, r.Spare615);
                break;
            case kAcArmUnits:
                Take(p, r.ArmUnits);
                break;
            case kAcTypeDesignator:
                Take(p, r.TypeDesignator);
                break;
            case kAcMaxRampWeight:
                Take(p, r.MaxRampWeight);
                break;
            case kAcSpare619:
                Take(p, r.Spare619);
                break;
            case kAcSpare620:
                Take(p, r.Spare620);
                break;
            case kAcTaxiFuel:
                Take(p, r.TaxiFuel);
                break;
            case kAcWeightUnits:
                Take(p, r.WeightUnits);
                break;
            case kAcFuelUnits:
                Take(p, r.FuelUnits);
                break;
            case kAcGraphArmMax:
                Take(p, r.GraphArmMax);
                break;
            case kAcGraphArmMin:
                Take(p, r.GraphArmMin);
                break;
            case kAcGraphWeightMax:
                Take(p, r.GraphWeightMax);
                break;
            case kAcGraphWeightMin:
                Take(p, r.GraphWeightMin);
                break;
            case kAcFlag628:
                Take(p, r.Flag628);
                break;
            default:
                break;
        }
    }
}

std::vector<PropVal> ToProps(const StationRecord& r) {
    return {PropVal::Text(700, r.AircraftName), PropVal::Text(701, r.StationName),
            PropVal::I2(702, r.StationKind), PropVal::R8(703, r.Arm), PropVal::I4(704, r.Weight)};
}

void FromProps(std::span<const PropVal> props, StationRecord& r) {
    for (const PropVal& p : props) {
        switch (p.propId) {
            case kStAircraftName:
                Take(p, r.AircraftName);
                break;
            case kStStationName:
                Take(p, r.StationName);
                break;
            case kStKind:
                Take(p, r.StationKind);
                break;
            case kStArm:
                Take(p, r.Arm);
                break;
            case kStWeight:
                Take(p, r.Weight);
                break;
            default:
                break;
        }
    }
}

// The point number, the sort key, is written last.
std::vector<PropVal> ToProps(const EnvelopePointRecord& r) {
    return {PropVal::Text(801, r.AircraftName), PropVal::R8(802, r.Arm), PropVal::I4(803, r.Weight),
            PropVal::I2(800, r.PointNumber)};
}

void FromProps(std::span<const PropVal> props, EnvelopePointRecord& r) {
    for (const PropVal& p : props) {
        switch (p.propId) {
            case kEnvPointNumber:
                Take(p, r.PointNumber);
                break;
            case kEnvAircraftName:
                Take(p, r.AircraftName);
                break;
            case kEnvArm:
                Take(p, r.Arm);
                break;
            case kEnvWeight:
                Take(p, r.Weight);
                break;
            default:
                break;
        }
    }
}

}  // namespace aerix

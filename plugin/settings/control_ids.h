// SPDX-License-Identifier: MIT
#pragma once

namespace dastrel {

/// The identifiers of the panel's controls, groups and tab set.
enum control_id : unsigned {
    ID_ABOUT = 0x8001,
    ID_CLONE_NUM = 0x8002,
    ID_SIZE_VAR_X = 0x8003,
    ID_SIZE_VAR_Y = 0x8004,
    ID_SIZE_VAR_Z = 0x8005,
    ID_SIZE_INDEP = 0x8006,
    ID_SIZE_POLY_AREA = 0x8007,
    ID_H_MIN = 0x8008,
    ID_H_MAX = 0x8009,
    ID_P_MIN = 0x800A,
    ID_P_MAX = 0x800B,
    ID_DEP_POWER = 0x800C,
    ID_B_MIN = 0x800D,
    ID_B_MAX = 0x800E,
    ID_DISTRIBUTION = 0x800F,
    ID_ITERATIONS = 0x8010,
    ID_DENSITY_WG = 0x8011,
    ID_SEED = 0x8012,
    ID_JITTER = 0x8013,
    ID_SLOPE_MIN = 0x8014,
    ID_SLOPE_MAX = 0x8015,
    ID_SLOPE_LIMITS = 0x8016,
    ID_SIZE_WG = 0x8017,
    ID_SIZE_WG_INFLUENCE = 0x8018,
    ID_RESET_VALUES = 0x8019,
    ID_ZERO_ANGLES = 0x801A,
    ID_AUTO_MORPH_MAPS = 0x801B,
    ID_GROUP_BASIC = 0x801C,
    ID_GROUP_ADVANCED = 0x801D,
    ID_TABS = 0x801E,
    ID_H_ALIGN = 0x801F,
    ID_P_ALIGN = 0x8020,
    ID_P_ANGLE_WG = 0x8021,
    ID_P_ABSOLUTE = 0x8022
};

} // namespace dastrel

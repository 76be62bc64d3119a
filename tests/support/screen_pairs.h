// The pairs of frequency and angle on which screens are judged: 90 of them, coarse
// enough for a mesh and fine enough for a plate, at every angle that is in use.
#pragma once

#include <vector>

struct ScreenPair {
    double frequency; // lines per inch
    double angle;     // degrees
};

inline std::vector<ScreenPair> screenPairs()
{
    std::vector<ScreenPair> pairs;
    for (double frequency : {20, 30, 40, 50, 60, 75, 85, 100, 133, 150})
        for (double angle : {0.0, 7.5, 15.0, 22.5, 30.0, 45.0, 60.0, 75.0, 90.0})
            pairs.push_back({frequency, angle});
    return pairs;
}

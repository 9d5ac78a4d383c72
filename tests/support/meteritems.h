#pragma once

// The items of a DLT645 meter by both editions, told a second time: what catalogue and point lists are
// compared with.
struct MeterItem {
    const char *label;
    const char *address2007;
    const char *format2007;
    const char *address1997; // null: the older edition lacks it
    const char *format1997;
};

// clang-format off
constexpr MeterItem meterItems[] = {
    {"Positive active power rate of 4 electric energy", "00010400", "XXXXXX.XX", "9014", "XXXXXX.XX"},
    {"Positive active power rate of 3 electric energy", "00010300", "XXXXXX.XX", "9013", "XXXXXX.XX"},
    {"Positive active power rate of 2 electric energy", "00010200", "XXXXXX.XX", "9012", "XXXXXX.XX"},
    {"Positive active power rate of 1 electric energy", "00010100", "XXXXXX.XX", "9011", "XXXXXX.XX"},
    {"Combination active power rate 4 electricity", "00000400", "XXXXXX.XX", nullptr, nullptr},
    {"Combination active power rate 3 electricity", "00000300", "XXXXXX.XX", nullptr, nullptr},
    {"Combination active power rate 2 electricity", "00000200", "XXXXXX.XX", nullptr, nullptr},
    {"Combination active power rate 1 electricity", "00000100", "XXXXXX.XX", nullptr, nullptr},
    {"Combined reactive power 2 total electrical energy", "00040000", "XXXXXX.XX", nullptr, nullptr},
    {"Combined reactive power 1 total electrical energy", "00030000", "XXXXXX.XX", nullptr, nullptr},
    {"A-phase positive active energy", "00150000", "XXXXXX.XX", nullptr, nullptr},
    {"B-phase positive active energy", "00290000", "XXXXXX.XX", nullptr, nullptr},
    {"C-phase positive active energy", "003D0000", "XXXXXX.XX", nullptr, nullptr},
    {"Reactive constant of electric meter", "0400040A", "XXXXXX", "C031", "NNNNNN"},
    {"Active constant of electric meter", "04000409", "XXXXXX", "C030", "NNNNNN"},
    {"Combined active total electrical energy", "00000000", "XXXXXX.XX", nullptr, nullptr},
    {"Reverse active total electrical energy", "00020000", "XXXXXX.XX", "9020", "XXXXXX.XX "},
    {"Total reactive energy in the first quadrant", "00050000", "XXXXXX.XX", "9130", "XXXXXX.XX"},
    {"Total reactive energy in the second quadrant", "00060000", "XXXXXX.XX", "9150", "XXXXXX.XX"},
    {"Total reactive energy in the third quadrant", "00070000", "XXXXXX.XX", "9160", "XXXXXX.XX"},
    {"Total reactive energy in the fourth quadrant", "00080000", "XXXXXX.XX", "9140", "XXXXXX.XX"},
    {"Positive active total electrical energy", "00010000", "XXXXXX.XX", "9010", "XXXXXX.XX"},
    {"Instantaneous total apparent power", "02050000", "XX.XXXX", nullptr, nullptr},
    {"Instantaneous A-phase apparent power", "02050100", "XX.XXXX", nullptr, nullptr},
    {"Instantaneous B-phase apparent power", "02050200", "XX.XXXX", nullptr, nullptr},
    {"Instantaneous C-phase apparent power", "02050300", "XX.XXXX", nullptr, nullptr},
    {"Instantaneous total reactive power", "02040000", "XX.XXXX", "B640", "XX.XX"},
    {"Instantaneous A-phase reactive power", "02040100", "XX.XXXX", "B641", "XX.XX"},
    {"Instantaneous B-phase reactive power", "02040200", "XX.XXXX", "B642", "XX.XX"},
    {"Instantaneous C-phase reactive power", "02040300", "XX.XXXX", "B643", "XX.XX"},
    {"Instantaneous total active power", "02030000", "XX.XXXX", "B630", "XX.XXXX"},
    {"Instantaneous A-phase active power", "02030100", "XX.XXXX", "B631", "XX.XXXX"},
    {"Instantaneous B-phase active power", "02030200", "XX.XXXX", "B632", "XX.XXXX"},
    {"Instantaneous C-phase active power", "02030300", "XX.XXXX", "B633", "XX.XXXX"},
    {"Total power factor", "02060000", "X.XXX", "B650", "X.XXX"},
    {"A-phase power factor", "02060100", "X.XXX", "B651", "X.XXX"},
    {"B-phase power factor", "02060200", "X.XXX", "B652", "X.XXX"},
    {"C-phase power factor", "02060300", "X.XXX", "B653", "X.XXX"},
    {"A-phase current", "02020100", "XXX.XXX", "B621", "XX.XX"},
    {"B-phase current", "02020200", "XXX.XXX", "B622", "XX.XX"},
    {"C-phase current", "02020300", "XXX.XXX", "B623", "XX.XX"},
    {"A-phase voltage", "02010100", "XXX.X", "B611", "XXX"},
    {"B-phase voltage", "02010200", "XXX.X", "B612", "XXX"},
    {"C-phase voltage", "02010300", "XXX.X", "B613", "XXX"},
};
// clang-format on

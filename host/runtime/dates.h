// Dates: wall-clock time without a zone, to the second.
#pragma once

#include <ctime>

#include "host/runtime/objects.h"

namespace host::runtime {

struct DatePayload : Payload {
    DatePayload(); // now
    std::string describe() const override;

    // Setting a field leaves the others alone; a date such as 31 February is put right when it is next read, so that
    // the fields can be set in any order.
    void set(int32_t DatePayload::*field, int32_t value) { this->*field = value; }
    int32_t get(int32_t DatePayload::*field)
    {
        normalise();
        return this->*field;
    }
    double totalSeconds() const; // since 1 January 1904
    void setTotalSeconds(double seconds);
    void normalise() { set(parts()); }
    tm parts() const; // put right, with the weekday and the day of the year
    void set(const tm &parts);

    int32_t year, month, day, hour, minute, second;
};

} // namespace host::runtime

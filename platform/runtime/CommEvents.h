// The numbers of what happens on a serial port.
#pragma once

namespace runtime {

// The events that a port reports. The numbers are those of the field's classic serial control.
enum CommEvent : int {
    CommReceive = 2,
    CommBreak = 1001,
    CommFrame = 1004,
    CommOverrun = 1006,
    CommRxOver = 1008,
    CommRxParity = 1009,
    CommTxFull = 1010,    // a sentence was dropped because the port's waiting line is full
    CommLost = 2001,      // our own number: the device vanished while the port was open
    CommRestored = 2002,  // our own number: the device is back and reading goes on
};

}  // namespace runtime

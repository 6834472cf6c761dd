// Feeds arbitrary bytes to the readers of Demodulator_Settings, the choice
// record over the sixteen demodulator variants: as binary and as XML text,
// with validation on and off. A failed read must keep what the record held;
// nothing may crash. (The corpus: fuzz/corpus/demodulator/.)

#include "fuzztarget.h"

#include <morvane.h>

namespace {

const Morvane::Demodulator_Settings &reference()
{
    static const Morvane::Demodulator_Settings settings = [] {
        Morvane::Demodulator_Settings d;
        d.SetMode(Morvane::Demodulator_Settings::Mode_Morse);
        d.SetFrequencyOffset(10.0);
        Morvane::Morse_Settings morse;
        morse.SetSpeed(20.0);
        d.SetMorse_Settings(morse);
        return d;
    }();
    return settings;
}

} // namespace

void fuzzOne(const QByteArray &input)
{
    using fuzztarget::require;
    for (const bool validate : {true, false}) {
        {
            Morvane::Demodulator_Settings settings = reference();
            settings.SetValidate(validate);
            QByteArray bytes = input;
            if (!settings.SetBinaryRepresentation(bytes))
                require(settings == reference(), "a failed binary read changed the record");
        }
        {
            Morvane::Demodulator_Settings settings = reference();
            settings.SetValidate(validate);
            if (!settings.SetXmlString(QString::fromUtf8(input)))
                require(settings == reference(), "a failed XML read changed the record");
        }
    }
}

// The set's fields of the PEQ, 3D timing, Audio ADV, media test.
#include <map>
#include <string>

#include "AreaFields.h"
#include "FieldMakers.h"
#include "Sim3DTiming.h"
#include "SimMMode.h"
#include "SimMediaBrowser.h"
#include "SimSoundEditors.h"

namespace factorysim {

namespace {

std::string ReadOnly(const char* name) {
    return std::string(name) + " is what the set reports; it cannot be set";
}

// A number per index, e.g. audy-clevel[3] = 42; the read operations answer with it.
Field IndexedReadValue(const char* name, const char* help,
                       std::map<int, MAPI_U32> sim::SoundEditorState::*member) {
    return {name, "index", help,
            [member](const std::string& arg, std::string& value) {
                const auto index = ParseNumber(arg);
                if (!index || *index > 255) {
                    return "not an index from 0 to 255: " + arg;
                }
                const auto& values = AreaOf<sim::SoundEditorState>().*member;
                auto it = values.find(static_cast<int>(*index));
                value = std::to_string(it == values.end() ? 0 : it->second);
                return std::string();
            },
            [member](const std::string& arg, const std::string& value) {
                const auto index = ParseNumber(arg);
                if (!index || *index > 255) {
                    return "not an index from 0 to 255: " + arg;
                }
                const auto n = ParseNumber(value);
                if (!n || *n > 0xFFFFFFFFULL) {
                    return "not a number from 0 to 4294967295: " + value;
                }
                (AreaOf<sim::SoundEditorState>().*member)[static_cast<int>(*index)] =
                    static_cast<MAPI_U32>(*n);
                return std::string();
            }};
}

// What the sound processor was last given for a band, "none" before anything.
template <size_t N>
Field AppliedBand(const char* name, const char* help, const char* const (&parts)[N],
                  std::map<int, std::array<MAPI_U8, N>> sim::SoundEditorState::*member) {
    return {name, "band", help,
            [member, &parts](const std::string& arg, std::string& value) {
                const auto band = ParseNumber(arg);
                if (!band || *band > 255) {
                    return "not a band from 0 to 255: " + arg;
                }
                const auto& bands = AreaOf<sim::SoundEditorState>().*member;
                auto it = bands.find(static_cast<int>(*band));
                if (it == bands.end()) {
                    value = "none";
                    return std::string();
                }
                value.clear();
                for (size_t i = 0; i < N; ++i) {
                    value += (i ? " " : "") + std::string(parts[i]) + "=" +
                             std::to_string(it->second[i]);
                }
                return std::string();
            },
            [name](const std::string&, const std::string&) { return ReadOnly(name); }};
}

// What the console's set operations last wrote, by parameter; "none" before anything.
Field IndexedWritten(const char* name, const char* help,
                     std::map<int, MAPI_U8> sim::SoundEditorState::*member) {
    return {name, "param", help,
            [member](const std::string& arg, std::string& value) {
                const auto index = ParseNumber(arg);
                if (!index || *index > 255) {
                    return "not a parameter from 0 to 255: " + arg;
                }
                const auto& values = AreaOf<sim::SoundEditorState>().*member;
                auto it = values.find(static_cast<int>(*index));
                value = it == values.end() ? "none" : std::to_string(it->second);
                return std::string();
            },
            [name](const std::string&, const std::string&) { return ReadOnly(name); }};
}

const char* const kPeqParts[] = {"gain", "f0", "f0div100", "q"};
const char* const kHlpfParts[] = {"type", "f0", "f0div100"};

Field PeqLowHigh() {
    return {"peq-low-high", nullptr,
            "the sound setting's choice of band 7 for the PEQ: 1 LOW, 2 HIGH (0 neither)",
            [](const std::string&, std::string& value) {
                value = std::to_string(AreaOf<sim::MModeState>().audio.u8PEQLowHigh);
                return std::string();
            },
            [](const std::string&, const std::string& value) {
                const auto n = ParseNumber(value);
                if (!n || *n > 2) {
                    return "not 0, 1 or 2: " + value;
                }
                AreaOf<sim::MModeState>().audio.u8PEQLowHigh = static_cast<MAPI_U8>(*n);
                return std::string();
            }};
}

Field UsbFolder() {
    return {"usb-folder", nullptr, "the USB drive's folder, a path in the set's root",
            [](const std::string&, std::string& value) {
                value = AreaOf<sim::MediaState>().usbFolder;
                return std::string();
            },
            [](const std::string&, const std::string& value) {
                if (value.empty() || value[0] != '/') {
                    return "not an absolute path of the set: " + value;
                }
                AreaOf<sim::MediaState>().usbFolder = value;
                return std::string();
            }};
}

Field MediaPlayer() {
    return {"media-player", nullptr, "what the media browser plays: file and state",
            [](const std::string&, std::string& value) {
                const auto& m = AreaOf<sim::MediaState>();
                value = (m.playing.empty() ? "-" : m.playing) + " " + m.state;
                std::string list;
                for (const auto& f : m.playList) list += (list.empty() ? "" : ",") + f;
                value += " playlist=" + (list.empty() ? "-" : list);
                return std::string();
            },
            [](const std::string&, const std::string&) { return ReadOnly("media-player"); }};
}

}  // namespace

std::vector<Field> SoundMediaFields() {
    using sim::MediaState;
    using sim::SoundEditorState;
    using sim::Timing3DState;
    return {
        Flag("audyssey", "1: the set has the advanced-sound option (28 PEQ bands)",
             &SoundEditorState::audyssey),
        PeqLowHigh(),
        AppliedBand("peq", "the PEQ setting the sound processor last got for a band", kPeqParts,
                    &SoundEditorState::peq),
        AppliedBand("hlpf", "the low/high-pass setting the processor last got (type 0 LPF, 1 HPF)",
                    kHlpfParts, &SoundEditorState::hlpf),
        IndexedReadValue("audy-clevel", "what the advanced-sound processor's level read answers",
                         &SoundEditorState::audyCLevel),
        IndexedReadValue("audy-param", "what the advanced-sound processor's parameter read answers",
                         &SoundEditorState::audyParam),
        IndexedWritten("adv-param", "what the advanced-sound console's command 55 last set",
                       &SoundEditorState::advSetParam),
        IndexedWritten("audy-set-param", "what the advanced-sound console's command 53 last set",
                       &SoundEditorState::audySetParam),
        Number("l-open", "the 3D glasses' left open length", &Timing3DState::lOpen, 0xFFFF),
        Number("l-close", "the 3D glasses' left close length", &Timing3DState::lClose, 0xFFFF),
        Number("r-open", "the 3D glasses' right open length", &Timing3DState::rOpen, 0xFFFF),
        Number("r-close", "the 3D glasses' right close length", &Timing3DState::rClose, 0xFFFF),
        Number("pwm-duty", "the 3D sync PWM's duty", &Timing3DState::duty, 0xFFFF),
        Number("pwm-phase", "the 3D sync PWM's phase", &Timing3DState::phase, 0xFFFF),
        Number("timing-mode", "the 3D timing mode (0-3)", &Timing3DState::mode, 3),
        Number("output-vfreq", "the output's vertical frequency in tenths of a hertz",
               &Timing3DState::outputVFreq, 0xFFFF),
        Flag("usb-present", "1: a USB drive is plugged in", &MediaState::usbPresent),
        UsbFolder(),
        Flag("media-init-fails", "1: the media browser fails to start", &MediaState::initFails),
        Flag("media-play-fails", "1: the media browser fails to play", &MediaState::playFails),
        MediaPlayer(),
        Flag("dtv-service-count-fails",
             "1: the DTV service count cannot be read (stopping the media test aborts)",
             &MediaState::serviceCountFails),
    };
}

}  // namespace factorysim

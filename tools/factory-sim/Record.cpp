// The run's record: one JSON document, its shape in record.schema.json.
#include <sstream>

#include "SimJournal.h"
#include "Station.h"

namespace factorysim {

using sim::JsonQuote;

namespace {

std::string List(const std::vector<std::string>& objects) {
    std::string out = "[";
    for (size_t i = 0; i < objects.size(); ++i) {
        out += (i ? "," : "") + objects[i];
    }
    return out + "]";
}

std::string OrNull(const std::string& text, bool present) {
    return present ? JsonQuote(text) : "null";
}

}  // namespace

std::string Station::RecordJson() const {
    std::lock_guard<std::mutex> lock(m_mutex);
    StepOutcome outcome = m_error.empty() ? StepOutcome::Pass : StepOutcome::Error;
    for (const Step& step : m_steps) {
        if (outcome == StepOutcome::Pass && step.outcome != StepOutcome::Pass) {
            outcome = step.outcome;
        }
    }
    std::ostringstream out;
    out << "{\n  \"format\": \"factory-sim-record/1\",\n"
        << "  \"station\": " << JsonQuote(m_station) << ",\n"
        << "  \"script\": " << JsonQuote(m_script) << ",\n"
        << "  \"set\": {\"model\": " << OrNull(m_identity.model, m_identity.read)
        << ", \"serial\": " << OrNull(m_identity.serial, m_identity.read)
        << ", \"mac\": " << OrNull(m_identity.mac, m_identity.read) << "},\n"
        << "  \"start\": " << JsonQuote(m_startWall) << ",\n"
        << "  \"end\": " << JsonQuote(m_endWall) << ",\n"
        << "  \"virtualMs\": " << (m_endMs - m_startMs) << ",\n"
        << "  \"outcome\": " << JsonQuote(OutcomeName(outcome)) << ",\n"
        << "  \"error\": " << OrNull(m_error, !m_error.empty()) << ",\n"
        << "  \"phases\": [";
    for (size_t i = 0; i < m_phases.size(); ++i) {
        const Phase& p = m_phases[i];
        out << (i ? "," : "") << "\n    {\"name\": " << JsonQuote(p.name)
            << ", \"line\": " << p.line << ", \"outcome\": "
            << JsonQuote(p.reached && p.outcome ? OutcomeName(*p.outcome) : "SKIPPED")
            << ", \"startMs\": " << (p.startMs - m_startMs)
            << ", \"durationMs\": " << (p.endMs - p.startMs) << "}";
    }
    out << (m_phases.empty() ? "" : "\n  ") << "],\n  \"steps\": [";
    for (size_t i = 0; i < m_steps.size(); ++i) {
        const Step& s = m_steps[i];
        const bool failed = s.outcome == StepOutcome::Fail;
        out << (i ? "," : "") << "\n    {\"line\": " << s.line
            << ", \"text\": " << JsonQuote(s.text)
            << ", \"phase\": " << OrNull(s.phase, !s.phase.empty())
            << ", \"outcome\": " << JsonQuote(OutcomeName(s.outcome))
            << ", \"startMs\": " << (s.startMs - m_startMs)
            << ", \"durationMs\": " << (s.endMs - s.startMs)
            << ", \"output\": " << JsonQuote(s.output)
            << ", \"expected\": " << OrNull(s.expected, failed)
            << ", \"received\": " << OrNull(s.received, failed)
            << ",\n     \"notifications\": " << List(s.notifications)
            << ",\n     \"calls\": " << List(s.calls)
            << ",\n     \"listener\": " << List(s.listener)
            << ",\n     \"console\": " << List(s.console) << ",\n     \"attachments\": [";
        for (size_t a = 0; a < s.attachments.size(); ++a) {
            const Attachment& at = s.attachments[a];
            out << (a ? ", " : "") << "{\"name\": " << JsonQuote(at.name)
                << ", \"path\": " << JsonQuote(at.path) << ", \"type\": " << JsonQuote(at.type)
                << "}";
        }
        out << "]}";
    }
    out << (m_steps.empty() ? "" : "\n  ") << "]\n}\n";
    return out.str();
}

}  // namespace factorysim

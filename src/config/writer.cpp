#include "config/writer.h"

#include "config/atomic_file.h"
#include "config/layout.h"
#include "frame/catalogue.h"
#include "frame/program.h"

namespace ks {

namespace {

void appendLine(std::string& out, const LayoutLine& line, const Field* field) {
    switch (line.kind) {
    case LineKind::Section:
        out += line.text;
        break;
    case LineKind::Empty:
        break;
    case LineKind::Marked:
    case LineKind::Comment:
        out += "// set ";
        out += field->tag();
        out += ' ';
        out += field->text();
        if (line.kind == LineKind::Marked) out += kAddedMark;
        break;
    case LineKind::Set:
        out += "set ";
        [[fallthrough]];
    case LineKind::Bare:
        out += field->tag();
        out += ' ';
        out += field->text();
        break;
    }
    out += kLineEnd;
}

} // namespace

std::string RenderConfig(const Program& program) {
    std::string out;
    out.reserve(8192);
    for (const LayoutLine& line : configLayout()) {
        const Field* field = nullptr;
        if (line.kind != LineKind::Section && line.kind != LineKind::Empty) {
            field = &program.form(line.form).field(line.text);
            // The IP line stands only while IP holds an address.
            if (line.kind == LineKind::Marked && line.text == "IP" && field->text().empty()) continue;
        }
        appendLine(out, line, field);
    }
    return out;
}

OperationResult WriteConfig(Program& program) {
    const std::string& target = program.frmMain.field("FFile").text();
    if (target.empty() || target == kNone) return OperationResult::success();
    OperationResult result = replaceFileAtomically(target, RenderConfig(program));
    if (result.ok) program.state.ConfigSaved = 1;
    return result;
}

} // namespace ks

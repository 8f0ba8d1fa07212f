#include "config/writer.h"

#include "config/atomic_file.h"
#include "config/layout.h"
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
        out += field->key();
        out += ' ';
        out += field->text();
        if (line.kind == LineKind::Marked) out += kAddedMark;
        break;
    case LineKind::Set:
        out += "set ";
        [[fallthrough]];
    case LineKind::Bare:
        out += field->key();
        out += ' ';
        out += field->text();
        break;
    }
    out += kLineEnd;
}

} // namespace

std::string renderConfig(const Program& program) {
    std::string out;
    out.reserve(8192);
    for (const LayoutLine& line : configLayout()) {
        const Field* field = nullptr;
        if (line.kind != LineKind::Section && line.kind != LineKind::Empty) {
            field = &program.field(line.field);
            // The IP line stands only while IP holds an address.
            if (line.field == id::IP && field->text().empty()) continue;
        }
        appendLine(out, line, field);
    }
    return out;
}

OperationResult writeConfig(Program& program) {
    const std::string& target = program.field(id::FFile).text();
    if (isUnset(target)) return OperationResult::success();
    OperationResult result = replaceFileAtomically(target, renderConfig(program));
    if (result.ok) program.noteConfigSaved();
    return result;
}

} // namespace ks

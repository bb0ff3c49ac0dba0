#include "textedit.h"

#include <algorithm>
#include <vector>

namespace cfgmsg {

namespace {

// The lines of one node: its '[path]' line and one line per param.
struct node_lines {
    std::size_t header = 0;
    std::vector<std::size_t> params;
};

// The param line "NAME = VALUE" as the text form writes it.
std::string param_line(std::string_view indent, const param &p)
{
    std::string line = std::string(indent) + escape(p.name, field_kind::name) + " =";
    if (p.value && !p.value->empty())
        line += " " + escape(*p.value, field_kind::value);
    return line;
}

// `line` with its value replaced; the name and what precedes '=' stay.
std::string with_value(std::string_view line, const std::optional<std::string> &value)
{
    std::size_t eq = 0;
    while (eq < line.size() && line[eq] != '=')
        eq += line[eq] == '\\' ? 2 : 1;
    std::string out(line.substr(0, std::min(eq + 1, line.size())));
    if (value && !value->empty())
        out += " " + escape(*value, field_kind::value);
    return out;
}

} // namespace

std::string edit_text(std::string_view original, const message &before, const message_edits &edits,
                      const message &after)
{
    const std::string fallback = to_text(after);
    std::vector<std::string> lines;
    for (std::size_t from = 0; from <= original.size();) {
        const std::size_t nl = std::min(original.find('\n', from), original.size());
        lines.emplace_back(original.substr(from, nl - from));
        from = nl + 1;
    }
    const bool final_newline = !original.empty() && original.back() == '\n';
    if (final_newline)
        lines.pop_back();
    const std::string eol = !lines.empty() && lines[0].ends_with('\r') ? "\r" : "";

    // Which line is which, as parse_text reads them.
    std::vector<node_lines> nodes;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string_view t = trim(lines[i]);
        if (t.empty() || t.front() == '#')
            continue;
        if (t.size() >= 2 && t.front() == '[' && t.back() == ']')
            nodes.push_back({i, {}});
        else if (!nodes.empty())
            nodes.back().params.push_back(i);
    }
    if (nodes.size() != before.nodes.size())
        return fallback;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if (nodes[i].params.size() != before.nodes[i].params.size())
            return fallback;

    std::vector<bool> dropped(lines.size(), false);
    std::vector<std::vector<std::string>> added(lines.size());
    std::size_t k = 0; // next node of `after`
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const node &b = before.nodes[i];
        const node_lines &at = nodes[i];
        if (std::ranges::find(edits.delete_nodes, b.path) != edits.delete_nodes.end()) {
            const std::size_t last = at.params.empty() ? at.header : at.params.back();
            std::fill(dropped.begin() + static_cast<std::ptrdiff_t>(at.header),
                      dropped.begin() + static_cast<std::ptrdiff_t>(last) + 1, true);
            continue;
        }
        if (k == after.nodes.size() || after.nodes[k].path != b.path)
            return fallback;
        const node &a = after.nodes[k++];
        std::size_t m = 0; // next param of `a`
        std::string indent = "    ";
        for (std::size_t j = 0; j < b.params.size(); ++j) {
            const std::string &line = lines[at.params[j]];
            indent = line.substr(0, line.find_first_not_of(" \t"));
            const bool unset = std::ranges::any_of(edits.unsets, [&](const param_ref &u) {
                return u.path == b.path && u.name == b.params[j].name;
            });
            if (unset) {
                dropped[at.params[j]] = true;
                continue;
            }
            if (m == a.params.size() || a.params[m].name != b.params[j].name)
                return fallback;
            if (a.params[m].value != b.params[j].value)
                lines[at.params[j]] = with_value(trim(line), a.params[m].value).insert(0, indent) + eol;
            ++m;
        }
        const std::size_t last = at.params.empty() ? at.header : at.params.back();
        for (; m < a.params.size(); ++m)
            added[last].push_back(param_line(indent, a.params[m]) + eol);
    }

    std::string out;
    out.reserve(original.size() + 256);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!dropped[i])
            out += lines[i] + "\n";
        for (const std::string &line : added[i])
            out += line + "\n";
    }
    if (!final_newline && !lines.empty() && !dropped.back() && added.back().empty())
        out.pop_back();
    for (; k < after.nodes.size(); ++k) {
        if (!out.empty() && !out.ends_with('\n'))
            out += '\n';
        out += eol + "\n[" + escape(after.nodes[k].path, field_kind::path) + "]" + eol + "\n";
        for (const param &p : after.nodes[k].params)
            out += param_line("    ", p) + eol + "\n";
    }
    // The figures of the first line, when it is the one to_text writes.
    if (out.starts_with("# body length ")) {
        const std::size_t end = out.find('\n');
        const std::string line = out.substr(0, end);
        const std::string was = to_text(before);
        if (was.substr(0, was.find('\n')) == trim(line))
            out.replace(0, line.size(), fallback.substr(0, fallback.find('\n')) + eol);
    }
    message check;
    text_error err;
    return parse_text(out, check, err) && check == after ? out : fallback;
}

} // namespace cfgmsg

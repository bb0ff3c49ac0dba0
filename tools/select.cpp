#include "select.h"

#include "apply.h"
#include "msgjson.h"
#include "value_check.h"

#include <nlohmann/json.hpp>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <set>

namespace cfgmsg {

namespace {

// The byte an escape at word[i] ('\\' there) stands for, and its length;
// nullopt (with `error`) for a bad one.
std::optional<char> escaped(std::string_view word, std::size_t i, std::size_t &length, std::string &error)
{
    length = 2;
    const char c = i + 1 < word.size() ? word[i + 1] : '\0';
    switch (c) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case 'x': {
        const int hi = i + 2 < word.size() ? hex_digit(word[i + 2]) : -1;
        const int lo = i + 3 < word.size() ? hex_digit(word[i + 3]) : -1;
        if (hi < 0 || lo < 0)
            break;
        length = 4;
        return static_cast<char>(hi * 16 + lo);
    }
    default:
        if (c != '\0' && std::strchr("\\*?{},.=", c) != nullptr)
            return c;
    }
    error =
        "bad escape in '" + std::string(word) + "' (use \\\\ \\n \\r \\t \\xNN, or \\ before * ? { } , . =)";
    return std::nullopt;
}

// The end of the {..} group opening at word[open], or npos when it is none.
std::size_t group_end(std::string_view word, std::size_t open)
{
    for (std::size_t i = open + 1; i < word.size(); ++i) {
        if (word[i] == '\\')
            ++i;
        else if (word[i] == '{')
            return std::string_view::npos;
        else if (word[i] == '}')
            return i > open + 1 ? i : std::string_view::npos;
    }
    return std::string_view::npos;
}

bool all_digits(std::string_view s)
{
    return !s.empty() && s.find_first_not_of("0123456789") == std::string_view::npos;
}

bool parse_choices(std::string_view inside, std::vector<glob::choice> &out, std::string &error)
{
    for (std::size_t from = 0; from <= inside.size();) {
        std::size_t comma = from;
        while (comma < inside.size() && inside[comma] != ',')
            comma += inside[comma] == '\\' ? 2 : 1;
        comma = std::min(comma, inside.size());
        const std::string_view item = inside.substr(from, comma - from);
        glob::choice c;
        const std::size_t dots = item.find("..");
        if (dots != std::string_view::npos && all_digits(item.substr(0, dots)) &&
            all_digits(item.substr(dots + 2)) && dots <= 9 && item.size() - dots - 2 <= 9) {
            c.range = true;
            c.first = std::stoul(std::string(item.substr(0, dots)));
            c.last = std::stoul(std::string(item.substr(dots + 2)));
            if (c.first > c.last) {
                error = "empty range {" + std::string(item) + "}";
                return false;
            }
        } else {
            for (std::size_t i = 0; i < item.size(); ++i) {
                if (item[i] != '\\') {
                    c.word += item[i];
                    continue;
                }
                std::size_t length;
                const auto b = escaped(item, i, length, error);
                if (!b)
                    return false;
                c.word += *b;
                i += length - 1;
            }
        }
        out.push_back(std::move(c));
        from = comma + 1;
    }
    return true;
}

bool match_from(const std::vector<glob::part> &parts, std::size_t k, std::string_view s)
{
    if (k == parts.size())
        return s.empty();
    const glob::part &p = parts[k];
    switch (p.kind) {
    case glob::part::literal:
        return s.starts_with(p.text) && match_from(parts, k + 1, s.substr(p.text.size()));
    case glob::part::one:
        return !s.empty() && match_from(parts, k + 1, s.substr(1));
    case glob::part::any:
        for (std::size_t n = 0; n <= s.size(); ++n)
            if (match_from(parts, k + 1, s.substr(n)))
                return true;
        return false;
    case glob::part::one_of:
        for (const glob::choice &c : p.choices) {
            if (!c.range) {
                if (s.starts_with(c.word) && match_from(parts, k + 1, s.substr(c.word.size())))
                    return true;
                continue;
            }
            // A number written without leading zeros, of any length the digits allow.
            unsigned long v = 0;
            for (std::size_t n = 1; n <= s.size() && n <= 10 && s[n - 1] >= '0' && s[n - 1] <= '9'; ++n) {
                if (n == 2 && s[0] == '0')
                    break;
                v = v * 10 + static_cast<unsigned long>(s[n - 1] - '0');
                if (v >= c.first && v <= c.last && match_from(parts, k + 1, s.substr(n)))
                    return true;
            }
        }
        return false;
    }
    return false;
}

// Escapes the glob characters and '=' of a path or name that escape() left
// alone, so that the word names itself when read back as a pattern.
std::string as_word(std::string_view raw, field_kind kind)
{
    std::string out;
    for (const char c : escape(raw, kind)) {
        if (std::strchr("*?{}=", c) != nullptr) {
            char buf[8];
            std::snprintf(buf, sizeof buf, "\\x%02x", static_cast<unsigned char>(c));
            out += buf;
        } else
            out += c;
    }
    return out;
}

// Positions of the '.' that may end PATH in a PATH.PARAM word: not escaped,
// not inside braces, with something on either side; first to last.
std::vector<std::size_t> split_points(std::string_view ref)
{
    std::vector<std::size_t> out;
    int depth = 0;
    for (std::size_t i = 0; i < ref.size(); ++i) {
        if (ref[i] == '\\')
            ++i;
        else if (ref[i] == '{')
            ++depth;
        else if (ref[i] == '}')
            depth = std::max(depth - 1, 0);
        else if (ref[i] == '.' && depth == 0 && i > 0 && i + 1 < ref.size())
            out.push_back(i);
    }
    return out;
}

struct split_ref {
    glob path, name;
    std::string path_word, name_word;
};

// Splits PATH.PARAM at the last '.' that is neither escaped nor in braces.
bool split(std::string_view ref, split_ref &out, std::string &error)
{
    const std::vector<std::size_t> dots = split_points(ref);
    if (dots.empty()) {
        error = "'" + std::string(ref) + "' is not PATH.PARAM";
        return false;
    }
    out.path_word = ref.substr(0, dots.back());
    out.name_word = ref.substr(dots.back() + 1);
    return compile_glob(out.path_word, out.path, error) && compile_glob(out.name_word, out.name, error);
}

// Names of the params of the nodes at `path` that `name` matches, each once.
std::vector<std::string> matching_names(const message &msg, const std::string &path, const glob &name)
{
    std::vector<std::string> out;
    std::set<std::string_view> seen;
    for (const node &nd : msg.nodes)
        if (nd.path == path)
            for (const param &p : nd.params)
                if (glob_matches(name, p.name) && seen.insert(p.name).second)
                    out.push_back(p.name);
    return out;
}

// One edit made concrete against `msg`, then applied to it.
bool apply_one(message &msg, const edit &e, bool strict, bool quiet, std::string &error)
{
    message_edits concrete;
    if (e.kind == edit::delete_node) {
        glob g;
        if (!compile_glob(e.ref, g, error))
            return false;
        concrete.delete_nodes = matching_paths(msg, g);
        if (concrete.delete_nodes.empty()) {
            error = "no node matches '" + e.ref + "' to delete";
            return false;
        }
        return apply_edits(msg, concrete, error);
    }
    split_ref r;
    if (!split(e.ref, r, error))
        return false;
    std::vector<std::string> paths = matching_paths(msg, r.path);
    if (paths.empty() && e.kind == edit::set && !r.path.wild && !r.name.wild) {
        std::string literal;
        for (const glob::part &p : r.path.parts)
            literal += p.text;
        paths.push_back(literal); // a new node
    }
    if (paths.empty()) {
        error = "no node matches '" + r.path_word + "'";
        return false;
    }
    for (const std::string &path : paths) {
        std::vector<std::string> names;
        // Unset where the param is; set where a pattern finds it, or, for a
        // plain name, in every node (added where it is not).
        if (r.name.wild || e.kind == edit::unset)
            names = matching_names(msg, path, r.name);
        else
            names.push_back(r.name.parts.empty() ? std::string() : r.name.parts[0].text);
        for (std::string &name : names) {
            if (e.kind == edit::unset) {
                concrete.unsets.push_back(param_ref{path, std::move(name)});
                continue;
            }
            if (auto warning = value_warning(path, name, e.value.value_or(""));
                warning && (strict || !quiet)) {
                std::fprintf(stderr, "cfgmsg: %s%s.%s: %s\n",
                             strict ? "" : "warning: ", escape(path, field_kind::path).c_str(),
                             escape(name, field_kind::name).c_str(), warning->c_str());
                if (strict) {
                    error = "a value the library would not store as given (--strict)";
                    return false;
                }
            }
            concrete.sets.push_back(param_set{path, std::move(name), e.value});
        }
    }
    if (concrete.unsets.empty() && concrete.sets.empty()) {
        error = "no param matches '" + r.name_word + "' in the nodes of '" + r.path_word + "'";
        return false;
    }
    return apply_edits(msg, concrete, error);
}

bool read_lines(const std::string &file, std::vector<edit> &out, std::string &error)
{
    std::ifstream in;
    std::istream *from = &std::cin;
    if (file != "-") {
        in.open(file, std::ios::binary);
        if (!in) {
            error = file + ": cannot open: " + std::strerror(errno);
            return false;
        }
        from = &in;
    }
    std::string line;
    for (std::size_t n = 1; std::getline(*from, line); ++n) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const std::size_t first = line.find_first_not_of(" \t");
        if (first == std::string::npos || line[first] == '#')
            continue;
        edit e;
        e.origin = file + ":" + std::to_string(n);
        if (!parse_edit_line(line, e, error)) {
            error = e.origin + ": " + error;
            return false;
        }
        out.push_back(std::move(e));
    }
    if (from->bad()) {
        error = file + ": cannot read: " + std::strerror(errno);
        return false;
    }
    return true;
}

void put_value(nlohmann::ordered_json &j, const char *key, const std::optional<std::string> &v)
{
    j[key] = v ? nlohmann::ordered_json(*v) : nlohmann::ordered_json();
}

std::string dump(const nlohmann::ordered_json &j)
{
    return j.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

} // namespace

bool compile_glob(std::string_view word, glob &out, std::string &error)
{
    out = glob{};
    auto literal = [&]() -> std::string & {
        if (out.parts.empty() || out.parts.back().kind != glob::part::literal)
            out.parts.emplace_back();
        return out.parts.back().text;
    };
    for (std::size_t i = 0; i < word.size(); ++i) {
        const char c = word[i];
        if (c == '\\') {
            std::size_t length;
            const auto b = escaped(word, i, length, error);
            if (!b)
                return false;
            literal() += *b;
            i += length - 1;
        } else if (c == '*' || c == '?') {
            out.parts.push_back({c == '*' ? glob::part::any : glob::part::one, {}, {}});
            out.wild = true;
        } else if (const std::size_t end = c == '{' ? group_end(word, i) : std::string_view::npos;
                   end != std::string_view::npos) {
            glob::part p{glob::part::one_of, {}, {}};
            if (!parse_choices(word.substr(i + 1, end - i - 1), p.choices, error))
                return false;
            out.parts.push_back(std::move(p));
            out.wild = true;
            i = end;
        } else
            literal() += c;
    }
    return true;
}

bool glob_matches(const glob &g, std::string_view text)
{
    return match_from(g.parts, 0, text);
}

bool is_glob(std::string_view word)
{
    glob g;
    std::string error;
    return !compile_glob(word, g, error) || g.wild; // a bad one is reported by whoever compiles it
}

std::vector<std::string> matching_paths(const message &msg, const glob &g)
{
    std::vector<std::string> out;
    std::set<std::string_view> seen;
    for (const node &nd : msg.nodes)
        if (!seen.contains(nd.path) && glob_matches(g, nd.path)) {
            seen.insert(nd.path);
            out.push_back(nd.path);
        }
    return out;
}

std::string flat_line(const node &nd, const param &p)
{
    std::string line = as_word(nd.path, field_kind::path) + ".";
    for (const char c : as_word(p.name, field_kind::name))
        line += c == '.' ? std::string("\\.") : std::string(1, c);
    line += "=";
    if (p.value && !p.value->empty())
        line += escape(*p.value, field_kind::value);
    return line + '\n';
}

bool parse_edit_line(std::string_view line, edit &out, std::string &error)
{
    const std::size_t first = line.find_first_not_of(" \t");
    line.remove_prefix(first == std::string_view::npos ? line.size() : first);
    while (!line.empty() && (line.back() == ' ' || line.back() == '\t'))
        line.remove_suffix(1);
    for (const auto &[word, kind] : {std::pair{std::string_view("--unset"), edit::unset},
                                     {std::string_view("--delete-node"), edit::delete_node}}) {
        if (!line.starts_with(word) || line.size() == word.size() ||
            (line[word.size()] != ' ' && line[word.size()] != '\t'))
            continue;
        out.kind = kind;
        std::string_view ref = line.substr(word.size());
        ref.remove_prefix(ref.find_first_not_of(" \t"));
        out.ref = ref;
        return true;
    }
    if (line.starts_with("--")) {
        error = "expected PATH.PARAM=VALUE, --unset PATH.PARAM or --delete-node PATH";
        return false;
    }
    std::size_t eq = 0;
    while (eq < line.size() && line[eq] != '=')
        eq += line[eq] == '\\' ? 2 : 1;
    if (eq >= line.size()) {
        error = "'" + std::string(line) + "' is not PATH.PARAM=VALUE";
        return false;
    }
    out.kind = edit::set;
    out.ref = line.substr(0, eq);
    const std::string_view value = line.substr(eq + 1);
    if (value.empty())
        return true;
    // The value's escapes are those of the text form: read it as one.
    message one;
    text_error err;
    if (!parse_text("[n]\nv = " + std::string(value) + "\n", one, err)) {
        error = err.reason;
        return false;
    }
    out.value = one.nodes[0].params[0].value;
    return true;
}

bool edits_in_sequence(const cli::options &opt)
{
    // A backslash that is no escape of the text form ('\.', '\*', ...) is one
    // of the patterns'; the text form's own escapes ('\xf2') the plain edits undo.
    const auto patterned = [](std::string_view w) {
        std::string reason;
        return is_glob(w) || (w.find('\\') != std::string_view::npos && !unescape_field(w, reason));
    };
    if (opt.edits_file)
        return true;
    for (const std::string &p : opt.delete_nodes)
        if (patterned(p))
            return true;
    for (const std::string &r : opt.unsets)
        if (patterned(r))
            return true;
    for (std::size_t i = 1; i < opt.args.size(); ++i)
        if (patterned(std::string_view(opt.args[i]).substr(0, opt.args[i].find('='))))
            return true;
    return false;
}

int apply_edits_in_sequence(const cli::options &opt, message &msg, const std::string &file)
{
    std::vector<edit> edits;
    for (const std::string &p : opt.delete_nodes)
        edits.push_back({edit::delete_node, p, std::nullopt, p});
    for (const std::string &r : opt.unsets)
        edits.push_back({edit::unset, r, std::nullopt, r});
    for (std::size_t i = 1; i < opt.args.size(); ++i) {
        const std::string &arg = opt.args[i];
        const std::size_t eq = arg.find('=');
        if (eq == std::string::npos)
            return cli::fail(cli::exit_usage,
                             "set: '" + arg + "' is not PATH.PARAM=VALUE\ntry 'cfgmsg set --help'");
        edit e{edit::set, arg.substr(0, eq), std::nullopt, arg};
        if (eq + 1 < arg.size())
            e.value = arg.substr(eq + 1); // as given, no escapes
        if (e.value && e.value->find_first_of("\r\n") != std::string::npos)
            return cli::fail(cli::exit_usage,
                             "set: '" + escape(arg, field_kind::value) + "': the value holds a line break");
        edits.push_back(std::move(e));
    }
    std::string error;
    if (opt.edits_file) {
        if (*opt.edits_file == "-" && file == "-")
            return cli::fail(cli::exit_usage,
                             "set: '-' (standard input) given as FILE and as -f; it can be read only once");
        if (!read_lines(*opt.edits_file, edits, error))
            return cli::fail(cli::exit_usage, "set: " + error);
    }
    for (const edit &e : edits)
        if (!apply_one(msg, e, opt.strict, opt.quiet, error))
            return cli::fail(cli::exit_no, "set: " + e.origin + ": " + error + "; nothing written");
    return cli::exit_ok;
}

int print_selection(const cli::options &opt, const message &msg)
{
    if (opt.flat && opt.json)
        return cli::fail(cli::exit_usage, "get: --flat and --json exclude each other");
    std::string error;
    glob path, name;
    if (opt.args.size() > 1 && !compile_glob(opt.args[1], path, error))
        return cli::fail(cli::exit_usage, "get: " + error);
    if (opt.args.size() > 2 && !compile_glob(opt.args[2], name, error))
        return cli::fail(cli::exit_usage, "get: " + error);
    const bool every_node = opt.args.size() < 2, every_param = opt.args.size() < 3;
    bool node_found = false, param_found = false;
    std::optional<std::string> non_utf8;
    std::string out;
    auto json = nlohmann::ordered_json::array();
    for (const node &nd : msg.nodes) {
        if (!every_node && !glob_matches(path, nd.path))
            continue;
        node_found = true;
        if (!opt.flat && !opt.json && every_param) {
            out += node_text(nd);
            continue;
        }
        for (const param &p : nd.params) {
            if (!every_param && !glob_matches(name, p.name))
                continue;
            param_found = true;
            if (opt.json) {
                if (!non_utf8)
                    non_utf8 = non_utf8_in(node{nd.path, {p}}, 0);
                nlohmann::ordered_json j{{"path", nd.path}, {"name", p.name}};
                put_value(j, "value", p.value);
                json.push_back(std::move(j));
            } else if (opt.flat)
                out += flat_line(nd, p);
            else
                out += p.value.value_or("") + '\n';
        }
    }
    if (!every_node && !node_found)
        return cli::fail(cli::exit_no, opt.args[0] + ": no node matches '" + opt.args[1] + "'");
    if (!every_param && !param_found)
        return cli::fail(cli::exit_no, opt.args[0] + ": no param matches '" + opt.args[2] +
                                           "' in the nodes of '" + opt.args[1] + "'");
    if (non_utf8)
        std::fprintf(stderr, "cfgmsg: warning: %s: a %s is not UTF-8 and shows as U+FFFD\n",
                     opt.args[0].c_str(), non_utf8->substr(non_utf8->rfind(' ') + 1).c_str());
    return cli::write_stdout(opt.json ? dump(json) : out);
}

std::string changes_json(const std::vector<param_change> &changes, bool redact)
{
    auto all = nlohmann::ordered_json::array();
    for (const param_change &c : changes) {
        nlohmann::ordered_json j{{"path", c.path}, {"name", c.name}};
        if (c.in_a)
            put_value(j, "a", redact ? redacted(c.path, c.name, c.a) : c.a);
        if (c.in_b)
            put_value(j, "b", redact ? redacted(c.path, c.name, c.b) : c.b);
        all.push_back(std::move(j));
    }
    return dump(all);
}

bool kind_selected(std::string_view kind_path, const glob &g)
{
    // Every concrete path of the kind: each '{first..last}' part in turn.
    const std::size_t open = kind_path.find('{');
    if (open == std::string_view::npos)
        return glob_matches(g, kind_path);
    const std::size_t close = kind_path.find('}', open);
    const std::string_view bounds = kind_path.substr(open + 1, close - open - 1);
    const unsigned long first = std::stoul(std::string(bounds)),
                        last = std::stoul(std::string(bounds.substr(bounds.find("..") + 2)));
    for (unsigned long n = first; n <= last; ++n)
        if (kind_selected(std::string(kind_path.substr(0, open)) + std::to_string(n) +
                              std::string(kind_path.substr(close + 1)),
                          g))
            return true;
    return false;
}

} // namespace cfgmsg

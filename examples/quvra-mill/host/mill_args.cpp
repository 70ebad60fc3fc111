#include "host/mill_args.h"

#include <charconv>
#include <cmath>
#include <functional>
#include <map>
#include <stdexcept>

#include "interp/interp_options_t.h"
#include "interp/text_util.h"
#include "interp/tool_desc_parse.h"

namespace mill {

namespace {

void require(bool ok, const std::string& reason) {
  if (!ok) throw std::invalid_argument(reason);
}

double finite_number(std::string_view text, const std::string& what) {
  text = trim(text);
  double v = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
  require(!text.empty() && ec == std::errc() && end == text.data() + text.size() && std::isfinite(v),
          what + ": '" + std::string(text) + "' is not a number");
  return v;
}

double positive_number(std::string_view text, const std::string& what) {
  const double v = finite_number(text, what);
  require(v > 0, what + " must be positive, not " + std::string(trim(text)));
  return v;
}

// A length or a coordinate within what a machine can mean.
double machine_number(std::string_view text, const std::string& what) {
  const double v = finite_number(text, what);
  require(std::abs(v) <= machine_limit_mm,
          what + ": " + std::string(trim(text)) + " lies beyond the machine's limit of +-1000000 mm");
  return v;
}

std::array<double, 6> box_numbers(std::string_view list) {
  std::array<double, 6> box{};
  std::size_t n = 0;
  for (std::size_t comma = 0; comma != std::string_view::npos; list.remove_prefix(comma + 1)) {
    comma = list.find(',');
    require(n < box.size(), "--stock box takes six numbers X0,Y0,Z0,X1,Y1,Z1");
    box[n++] = machine_number(list.substr(0, comma), "--stock box");
    if (comma == std::string_view::npos) break;
  }
  require(n == box.size(), "--stock box takes six numbers X0,Y0,Z0,X1,Y1,Z1");
  for (int i = 0; i < 3; ++i)
    require(box[i] < box[i + 3],
            "--stock box: each maximum must exceed its minimum (axis " + std::string(1, "XYZ"[i]) + ")");
  return box;
}

using setter_t = std::function<void(mill_options_t&, const std::string&)>;

const std::map<std::string, setter_t, std::less<>>& value_options() {
  static const std::map<std::string, setter_t, std::less<>> table{
      {"--stock", [](mill_options_t& o, const std::string& v) { o.stock = parse_stock_spec(v); }},
      {"--cell", [](mill_options_t& o, const std::string& v) { o.cell = positive_number(v, "--cell"); }},
      {"--tool",
       [](mill_options_t& o, const std::string& v) {
         try {
           o.tool = parse_tool_desc(v);
         } catch (const std::invalid_argument& e) {
           throw std::invalid_argument("--tool " + v + ": " + e.what());
         }
       }},
      {"--tool-length",
       [](mill_options_t& o, const std::string& v) {
         o.tool_length = positive_number(v, "--tool-length");
         machine_number(v, "--tool-length");
       }},
      {"--tool-table", [](mill_options_t& o, const std::string& v) { o.tool_table = v; }},
      {"--out", [](mill_options_t& o, const std::string& v) { o.out_dir = v; }},
  };
  return table;
}

}  // namespace

stock_spec_t parse_stock_spec(std::string_view text) {
  stock_spec_t spec;
  if (lower(text.substr(0, 4)) == "box:") {
    spec.kind = stock_kind::box;
    spec.box = box_numbers(text.substr(4));
  } else {
    require(!trim(text).empty(), "--stock needs box:X0,Y0,Z0,X1,Y1,Z1 or an STL file");
    spec.kind = stock_kind::stl;
    spec.stl_path = std::string(text);
  }
  return spec;
}

mill_options_t parse_mill_args(const std::vector<std::string>& args) {
  mill_options_t o;
  bool open_stock = false;  // applies to a --stock given before or after it
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (arg == "--help" || arg == "-h") {
      o.help = true;
      continue;
    }
    if (arg == "--open-stock") {
      open_stock = true;
      continue;
    }
    if (arg.size() < 2 || arg[0] != '-') {
      require(o.program.empty(), "one program at a time: '" + o.program + "' and '" + arg + "'");
      o.program = arg;
      continue;
    }
    const std::size_t eq = arg.find('=');
    const std::string name = arg.substr(0, eq);
    const auto option = value_options().find(name);
    require(option != value_options().end(), "unknown option '" + name + "' (see --help)");
    std::string value;
    if (eq != std::string::npos) {
      value = arg.substr(eq + 1);
    } else {
      require(i + 1 < args.size(), name + " needs a value");
      value = args[++i];
    }
    option->second(o, value);
  }
  o.stock.allow_open = open_stock;
  return o;
}

std::string usage_text() {
  return "usage: quvra-mill [PROGRAM] [options]\n"
         "Cuts a stock with the tool moves of an NC program (G-code or APT CL data) and\n"
         "writes the cut surface, the stock file, a table of moves and a summary.\n"
         "With no PROGRAM it cuts a built-in sample.\n"
         "\n"
         "  --stock box:X0,Y0,Z0,X1,Y1,Z1   stock block (default: the box of the feed moves)\n"
         "  --stock FILE.stl                stock from a closed STL surface\n"
         "  --open-stock                    build from an STL surface that does not close\n"
         "  --cell W                        cell width in mm (default 0.2)\n"
         "  --tool DESC                     flat:D ball:D bull:D,R drill:D,ANGLE or\n"
         "                                  D,R,E,F,ALPHA,BETA,H (default flat:6)\n"
         "  --tool-length L                 length of tools that give none (default 40)\n"
         "  --tool-table FILE               tools by number for programs that change tools\n"
         "  --out DIR                       output folder (default quvra-mill-out/PROGRAM)\n"
         "Positions, stocks and tools must lie within +-1000000 mm, and a program may\n"
         "make at most 10000000 moves (an arc counts its chords).\n";
}

}  // namespace mill

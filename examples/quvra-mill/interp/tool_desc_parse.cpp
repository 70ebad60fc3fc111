#include "interp/tool_desc_parse.h"

#include <charconv>
#include <stdexcept>
#include <string>
#include <vector>

#include "interp/interp_options_t.h"
#include "interp/text_util.h"

namespace mill {

namespace {

void require(bool ok, const std::string& reason) {
  if (!ok) throw std::invalid_argument(reason);
}

std::vector<double> parse_numbers(std::string_view list) {
  std::vector<double> out;
  while (true) {
    const auto comma = list.find(',');
    const std::string_view item = trim(list.substr(0, comma));
    double v = 0;
    const auto [end, ec] = std::from_chars(item.data(), item.data() + item.size(), v);
    require(ec == std::errc() && end == item.data() + item.size() && !item.empty(),
            "bad number '" + std::string(item) + "'");
    out.push_back(v);
    if (comma == std::string_view::npos) return out;
    list.remove_prefix(comma + 1);
  }
}

void require_count(const std::vector<double>& v, std::size_t n, std::string_view kind) {
  require(v.size() == n, std::string(kind) + " takes " + std::to_string(n) + " number" + (n == 1 ? "" : "s"));
}

// Within what a machine can mean; also refuses inf, which passes d > 0.
void require_diameter(double d) {
  require(d > 0, "diameter must be positive");
  require(d <= machine_limit_mm, "diameter beyond the machine's limit of 1000000 mm");
}

}  // namespace

tool_desc_t flat_tool(double d) {
  require_diameter(d);
  return {tool_shape::flat, d, 0, d / 2, 0, 0, 0, 0};
}

tool_desc_t ball_tool(double d) {
  require_diameter(d);
  return {tool_shape::ball, d, d / 2, 0, d / 2, 0, 0, 0};
}

tool_desc_t bull_tool(double d, double r) {
  require_diameter(d);
  require(r >= 0 && r <= d / 2, "corner radius must lie between 0 and half the diameter");
  // The extremes are the simpler shapes, whichever way the user wrote them.
  const tool_shape shape = r == 0 ? tool_shape::flat : r == d / 2 ? tool_shape::ball : tool_shape::bull;
  return {shape, d, r, d / 2 - r, r, 0, 0, 0};
}

tool_desc_t drill_tool(double d, double point_angle) {
  require_diameter(d);
  require(point_angle > 0 && point_angle < 180, "point angle must lie between 0 and 180 degrees");
  return {tool_shape::drill, d, 0, 0, 0, 90 - point_angle / 2, 0, 0};
}

tool_desc_t apt_tool(const std::array<double, 7>& p) {
  const auto [d, r, e, f, alpha, beta, h] = p;
  require_diameter(d);
  require(r >= 0 && e >= 0 && f >= 0, "corner radius and corner centre must not be negative");
  require(f <= machine_limit_mm && h <= machine_limit_mm, "height beyond the machine's limit of 1000000 mm");
  require(e + r <= d / 2 + 1e-9, "corner reaches beyond the diameter");
  require(alpha >= 0 && alpha < 90, "bottom angle must lie in [0, 90) degrees");
  require(beta > -90 && beta < 90, "side angle must lie in (-90, 90) degrees");
  require(h >= 0, "height must not be negative");
  return {tool_shape::apt, d, r, e, f, alpha, beta, h};
}

tool_desc_t parse_tool_desc(std::string_view text) {
  text = trim(text);
  const auto colon = text.find(':');
  const std::string_view kind = colon == std::string_view::npos ? "apt" : text.substr(0, colon);
  const std::vector<double> v = parse_numbers(colon == std::string_view::npos ? text : text.substr(colon + 1));
  if (kind == "flat" || kind == "ball") {
    require_count(v, 1, kind);
    return kind == "flat" ? flat_tool(v[0]) : ball_tool(v[0]);
  }
  if (kind == "bull" || kind == "drill") {
    require_count(v, 2, kind);
    return kind == "bull" ? bull_tool(v[0], v[1]) : drill_tool(v[0], v[1]);
  }
  if (kind == "apt") {
    require_count(v, 7, kind);
    return apt_tool({v[0], v[1], v[2], v[3], v[4], v[5], v[6]});
  }
  throw std::invalid_argument("unknown tool kind '" + std::string(kind) + "'");
}

}  // namespace mill

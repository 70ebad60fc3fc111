/* A plain C host: the C-compatible families compile, link and behave. */

#include <stdio.h>

#include "common/debug_util.h"
#include "common/failure.h"
#include "common/log.h"
#include "common/progress_monitor.h"
#include "common/stop.h"

static int failures = 0;

static void expect(int ok, const char* what) {
  if (!ok) {
    fprintf(stderr, "failed: %s\n", what);
    ++failures;
  }
}

int main(void) {
  debug_util__set_debug_var(17);
  expect(debug_util__get_debug_var() == 17, "debug var round trip");

  stop_source* src = new__stop_source();
  stop_token* tok = stop_source__get_token(src);
  expect(stop_token__stop_possible(tok) == 1, "token can stop");
  expect(stop_source__request_stop(src) == 1, "first request");
  expect(stop_token__stop_requested(tok) == 1, "token sees the request");
  delete__stop_source(src);
  delete__stop_token(tok);

  set_log_func(NULL);
  expect(progress_monitor__get_numerator(NULL) == 0, "null monitor");
  printf("%d failures\n", failures);
  return failures != 0;
}

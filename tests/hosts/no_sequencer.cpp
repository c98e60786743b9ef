// SPDX-License-Identifier: MIT
// Stands in for the ALSA sequencer on machines whose kernel has none, so that hosts that insist on one start without
// it. It takes every request and never delivers an event.
//
//   c++ -shared -fPIC -o no_sequencer.so no_sequencer.cpp && LD_PRELOAD=$PWD/no_sequencer.so HOST
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

// What the host asks for and only wants to hear that it went well. The callers' arguments are of no interest, and with
// C's way to call they need not be declared.
#define SUCCEEDS(name) \
  extern "C" int name() { return 0; }
// Lists that are empty.
#define ABSENT(name) \
  extern "C" int name() { return -ENOENT; }

SUCCEEDS(snd_seq_close)
SUCCEEDS(snd_seq_set_client_name)
SUCCEEDS(snd_seq_create_simple_port)
SUCCEEDS(snd_seq_delete_simple_port)
SUCCEEDS(snd_seq_alloc_queue)
SUCCEEDS(snd_seq_free_queue)
SUCCEEDS(snd_seq_control_queue)
SUCCEEDS(snd_seq_drain_output)
SUCCEEDS(snd_seq_drop_input)
SUCCEEDS(snd_seq_drop_output)
SUCCEEDS(snd_seq_event_input_pending)
SUCCEEDS(snd_seq_event_output)
SUCCEEDS(snd_seq_event_output_direct)
SUCCEEDS(snd_seq_free_event)
SUCCEEDS(snd_seq_get_port_info)
SUCCEEDS(snd_seq_set_port_info)
SUCCEEDS(snd_seq_get_queue_status)
SUCCEEDS(snd_seq_get_queue_tempo)
SUCCEEDS(snd_seq_set_queue_tempo)
SUCCEEDS(snd_seq_set_queue_timer)
SUCCEEDS(snd_seq_remove_events)
SUCCEEDS(snd_seq_subscribe_port)
SUCCEEDS(snd_seq_unsubscribe_port)
ABSENT(snd_seq_get_any_client_info)
ABSENT(snd_seq_get_any_port_info)
ABSENT(snd_seq_query_next_client)
ABSENT(snd_seq_query_next_port)
ABSENT(snd_seq_query_port_subscribers)
ABSENT(snd_timer_open)
ABSENT(snd_timer_query_open)

extern "C" int snd_seq_open(void** sequencer) {
  static char handle;
  *sequencer = &handle;
  return 0;
}

extern "C" int snd_seq_client_id() { return 128; }

extern "C" int snd_seq_event_input(void*, void** event) {
  *event = nullptr;
  return -EAGAIN;
}

// A descriptor to wait on that never becomes readable: the reading end of a pipe into which nobody writes.
extern "C" int snd_seq_poll_descriptors_count() { return 1; }

extern "C" int snd_seq_poll_descriptors(void*, pollfd* descriptors, unsigned space) {
  static int ends[2]{-1, -1};
  if (space < 1 || (ends[0] < 0 && pipe2(ends, O_CLOEXEC) != 0)) return 0;
  *descriptors = {.fd = ends[0], .events = POLLIN, .revents = 0};
  return 1;
}

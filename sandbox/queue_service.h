// The queue: submit, status, result, cancel.
#pragma once
#include "calls.h"
#include "job_board.h"
#include "key_check.h"
#include "ledger.h"

namespace sandbox {

// What the documents leave open is chosen here: a submit answers 200; an unknown application answers 404 at submit; a
// cancelled job is COMPLETED with the error "client_cancelled", and its result answers 499.
class QueueService {
 public:
  QueueService(const KeyCheck& keys, Ledger& ledger, JobBoard& jobs) : keys_(keys), ledger_(ledger), jobs_(jobs) {}
  HttpAnswer answer(const Call& call, const HttpRequest& request);

 private:
  // The one place where the sandbox takes money: job and purchase are on the disk before the answer goes out.
  HttpAnswer submit(const Call& call, const HttpRequest& request);
  HttpAnswer status(const Job& job, const HttpRequest& request) const;
  HttpAnswer result(const Job& job) const;
  HttpAnswer cancel(const Job& job);

  const KeyCheck& keys_;
  Ledger& ledger_;
  JobBoard& jobs_;
};

}  // namespace sandbox

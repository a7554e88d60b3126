// The gateway's side of what the job queue asks about operations that were cancelled here.
#pragma once

#include <functional>

#include "catalogue/credits_client.h"
#include "generation/generation_ports.h"

namespace sorvan::catalogue {

/// Fills the ports by which operations are cancelled, asked about and looked up. `client` makes a client of the present
/// gateway for who is signed in now; what it throws fails the question, and is never taken for an answer.
void plugCredits(GenerationPorts& ports, std::function<CreditsClient()> client);

}  // namespace sorvan::catalogue

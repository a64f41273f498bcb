#pragma once

/// The host's model. Solvers pass it along and know nothing of what it holds.
class SimulationDataModel {};

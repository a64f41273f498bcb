/**
 * @file create_solver.h
 * @brief The factory through which a host simulation framework obtains the solver.
 */
#ifndef CREATE_SOLVER_H
#define CREATE_SOLVER_H

#if defined(_WIN32) && defined(FMI_SOLVER_BUILDING)
#define FMI_SOLVER_EXPORT __declspec(dllexport)
#elif defined(_WIN32)
#define FMI_SOLVER_EXPORT __declspec(dllimport)
#elif defined(__GNUC__)
#define FMI_SOLVER_EXPORT __attribute__((visibility("default")))
#else
#define FMI_SOLVER_EXPORT
#endif

class Solver;

/**
 * Makes a solver that runs one FMU as partner of the host's model.
 *
 * Prints two lines about the build on standard output.
 *
 * @return a new solver, owned by the caller, who deletes it through its virtual destructor; null
 *         when there is no memory for it.
 */
extern "C" FMI_SOLVER_EXPORT Solver* createSolver();

#endif

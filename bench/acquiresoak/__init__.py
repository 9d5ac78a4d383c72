"""The parts of bench/acquire_soak.

Plant has all devices and what they hang on: a Server or a Line. Soak has them fail and come back, Box runs boxsim and
boxctl, ReportCheck judges the reports, Measures looks at the process, and the summary tells what came of it.
"""

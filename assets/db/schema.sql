-- Table of study sessions: one row for each session of each learner.
--
--   ymd_sta    date the session began,  'yyyy/mm/dd'
--   user_name  name of the learner
--   hms_sta    time the session began,  'hh:nn:ss' (24 hours, nn = minutes)
--   file_name  name of the study file
--   dt_end     date and time the session ended, 'yyyy/mm/dd hh:nn:ss';
--              null until the session ends
--   num_answer number of answers shown during the session;
--              null until the session ends
--
-- Dates and times are local time with leading zeros, so that comparing them
-- as text puts them in order of time.
create table t_kotoban (
    ymd_sta    text,
    user_name  text,
    hms_sta    text,
    file_name  text,
    dt_end     text,
    num_answer integer
);

-- Serves the study history: one learner's sessions within a range of dates,
-- in order of time.
create index i_kotoban_user_start on t_kotoban (user_name, ymd_sta, hms_sta);

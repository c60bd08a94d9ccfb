# fish completion for cm11-emulator
complete -c cm11-emulator -f
complete -c cm11-emulator -l mains -x -a '50 60' -d 'Frequency of the mains'
complete -c cm11-emulator -l speed -x -d 'Run n times as fast as the mains'
complete -c cm11-emulator -l fast -d 'Everything on the lines takes no time'
complete -c cm11-emulator -l house -r -F -d 'A lamp module for each device of a room list'
complete -c cm11-emulator -l lamp -x -a '(string join \n {A,B,C,D,E,F,G,H,I,J,K,L,M,N,O,P}(seq 16))' -d 'A lamp module'
complete -c cm11-emulator -l appliance -x -a '(string join \n {A,B,C,D,E,F,G,H,I,J,K,L,M,N,O,P}(seq 16))' -d 'An appliance module'
complete -c cm11-emulator -l link -r -F -d 'A link to the pseudo-terminal'
complete -c cm11-emulator -l fault -x -a 'all= wrong-checksum lost-byte lost-byte-from-computer doubled-byte changed-byte changed-byte-from-computer noise poll-before-checksum poll-after-checksum poll-before-function clock-request late-ready very-late-ready missing-ready collision lost-poll-answer no-clock-checksum macro-notice' -d 'A fault at the next occasion'
complete -c cm11-emulator -l seed -x -d 'Of the faults at random'
complete -c cm11-emulator -l trace -d 'Print the bytes on the serial line'
complete -c cm11-emulator -l keep -d 'Go on when the standard input ends'
complete -c cm11-emulator -l help -d 'Print the options and end'
